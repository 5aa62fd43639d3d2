// toml++: a tree, and a walk over it.

#include <toml++/toml.h>

#include "ReadJob.h"

namespace bench {
namespace {

template <typename Sink>
void readTable(const toml::table& table, Sink& sink) {
    for (const auto& [key, node] : table) {
        if (const toml::table* inner = node.as_table()) {
            sink.openObject(key.str());
            readTable(*inner, sink);
            sink.closeObject();
        } else {
            sink.parameter(key.str(), node.as_string()->get());
        }
    }
}

class Tree {
public:
    static constexpr const char* kFormat = "toml";

    void load(std::string toml) { text = std::move(toml); }

    template <typename Sink>
    void read(Sink& sink) {
        document = toml::parse(text);
        readTable(document, sink);
    }

private:
    std::string text;
    toml::table document;
};

}  // namespace

JobTypes tomlPlusPlusJobs() {
    return readJobs<Tree>("toml++");
}

}  // namespace bench
