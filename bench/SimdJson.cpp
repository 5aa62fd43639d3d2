// simdjson: on demand and its DOM, each with a parser that has its memory.

#include <simdjson.h>

#include "ReadJob.h"

namespace bench {
namespace {

namespace dom = simdjson::dom;
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

template <typename Sink>
void readObject(const dom::object& object, Sink& sink) {
    for (const auto [key, value] : object) {
        if (value.is_object()) {
            sink.openObject(key);
            readObject(value.get_object(), sink);
            sink.closeObject();
        } else {
            sink.parameter(key, value.get_string());
        }
    }
}

struct PrettyJson {
    static constexpr const char* kFormat = "json";
};
struct CompactJson {
    static constexpr const char* kFormat = "compact.json";
};

template <typename Parser, typename Format>
class WithParser {
public:
    static constexpr const char* kFormat = Format::kFormat;

    void load(const std::string& json) {
        text = simdjson::padded_string(json);
        if (parser.allocate(text.size()) != simdjson::SUCCESS) throw std::bad_alloc();
    }

protected:
    simdjson::padded_string text;
    Parser parser;
};

template <typename Format>
class OnDemand : public WithParser<ondemand::parser, Format> {
public:
    template <typename Sink>
    void read(Sink& sink) {
        ondemand::document document = this->parser.iterate(this->text);
        readObject(document.get_object(), sink);
    }
};

template <typename Format>
class Dom : public WithParser<dom::parser, Format> {
public:
    template <typename Sink>
    void read(Sink& sink) {
        readObject(this->parser.parse(this->text).get_object(), sink);
    }
};

}  // namespace

JobTypes simdJsonJobs() {
    JobTypes jobs = readJobs<OnDemand<CompactJson>>("simdjson compact");
    jobs.push_back(touchJob<OnDemand<PrettyJson>>("read", "simdjson"));
    jobs.push_back(touchJob<OnDemand<CompactJson>>("read", "simdjson compact"));
    jobs.push_back(touchJob<Dom<PrettyJson>>("document", "simdjson"));
    jobs.push_back(touchJob<Dom<CompactJson>>("document", "simdjson compact"));
    return jobs;
}

}  // namespace bench
