// nlohmann-json: SAX.

#include <nlohmann/json.hpp>

#include "ReadJob.h"

namespace bench {
namespace {

using nlohmann::json;

template <typename Sink>
class Handler : public nlohmann::json_sax<json> {
public:
    explicit Handler(Sink& target) : sink(target) {}

    bool start_object(std::size_t /*elements*/) override {
        if (depth++ != 0) sink.openObject(lastKey);
        return true;
    }
    bool end_object() override {
        if (--depth != 0) sink.closeObject();
        return true;
    }
    bool key(string_t& text) override {
        lastKey.swap(text);
        return true;
    }
    bool string(string_t& text) override {
        sink.parameter(lastKey, text);
        return true;
    }

    // What the corpora do not hold.
    bool null() override { return false; }
    bool boolean(bool /*value*/) override { return false; }
    bool number_integer(number_integer_t /*value*/) override { return false; }
    bool number_unsigned(number_unsigned_t /*value*/) override { return false; }
    bool number_float(number_float_t /*value*/, const string_t& /*text*/) override { return false; }
    bool binary(binary_t& /*value*/) override { return false; }
    bool start_array(std::size_t /*elements*/) override { return false; }
    bool end_array() override { return false; }
    bool parse_error(std::size_t /*position*/, const std::string& /*token*/,
                     const json::exception& /*error*/) override {
        return false;
    }

private:
    Sink& sink;
    std::string lastKey;
    std::size_t depth = 0;
};

class Sax {
public:
    static constexpr const char* kFormat = "compact.json";

    void load(std::string document) { text = std::move(document); }

    template <typename Sink>
    void read(Sink& sink) {
        Handler<Sink> handler(sink);
        json::sax_parse(text, &handler);
    }

private:
    std::string text;
};

}  // namespace

JobTypes nlohmannJsonJobs() {
    return readJobs<Sax>("nlohmann compact");
}

}  // namespace bench
