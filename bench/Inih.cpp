// inih: its one handler. Only events: sections do not nest, so they make no map by path.

#include <ini.h>

#include "ReadJob.h"

namespace bench {
namespace {

template <typename Sink>
struct Handler {
    Sink& sink;
    std::string section;

    static int entry(void* self, const char* section, const char* name, const char* value) {
        auto& handler = *static_cast<Handler*>(self);
        if (handler.section != section) {
            handler.section = section;
            handler.sink.openObject(handler.section);
        }
        handler.sink.parameter(name, value);
        return 1;
    }
};

class Entries {
public:
    static constexpr const char* kFormat = "ini";

    void load(std::string ini) { text = std::move(ini); }

    template <typename Sink>
    void read(Sink& sink) {
        Handler<Sink> handler{sink, {}};
        ini_parse_string(text.c_str(), Handler<Sink>::entry, &handler);
    }

private:
    std::string text;
};

}  // namespace

JobTypes inihJobs() {
    return {{"events", "inih", Entries::kFormat, makeJob<ReadJob<Entries, TouchSink>>}};
}

}  // namespace bench
