// simdjson: on demand, with a parser that has its memory.

#include <simdjson.h>

#include "ReadJob.h"

namespace bench {
namespace {

namespace ondemand = simdjson::ondemand;

template <typename Sink>
void readObject(ondemand::object object, Sink& sink) {
    for (auto field : object) {
        const std::string_view key = field.unescaped_key();
        ondemand::value value = field.value();
        if (value.type() == ondemand::json_type::object) {
            sink.openObject(key);
            readObject(value.get_object(), sink);
            sink.closeObject();
        } else {
            sink.parameter(key, value.get_string());
        }
    }
}

class OnDemand {
public:
    static constexpr const char* kFormat = "compact.json";

    void load(const std::string& json) {
        text = simdjson::padded_string(json);
        if (parser.allocate(text.size()) != simdjson::SUCCESS) throw std::bad_alloc();
    }

    template <typename Sink>
    void read(Sink& sink) {
        ondemand::document document = parser.iterate(text);
        readObject(document.get_object(), sink);
    }

private:
    simdjson::padded_string text;
    ondemand::parser parser;
};

}  // namespace

JobTypes simdJsonJobs() {
    return readJobs<OnDemand>("simdjson compact");
}

}  // namespace bench
