// expat: element handlers.

#include <expat.h>

#include <memory>

#include "ReadJob.h"

namespace bench {
namespace {

/// The document's outermost element is no object.
template <typename Sink>
struct Handler {
    Sink& sink;
    std::size_t depth = 0;

    // Attributes are names and values in turn, a null behind them; the first is the object's name.
    static void start(void* self, const char* element, const char** attributes) {
        auto& handler = *static_cast<Handler*>(self);
        if (handler.depth++ == 0) return;
        handler.sink.openObject(element, attributes[1]);
        for (attributes += 2; *attributes != nullptr; attributes += 2)
            handler.sink.parameter(attributes[0], attributes[1]);
    }
    static void end(void* self, const char* /*element*/) {
        auto& handler = *static_cast<Handler*>(self);
        if (--handler.depth != 0) handler.sink.closeObject();
    }
};

class Elements {
public:
    static constexpr const char* kFormat = "xml";

    void load(std::string xml) { text = std::move(xml); }

    template <typename Sink>
    void read(Sink& sink) {
        const std::unique_ptr<XML_ParserStruct, decltype(&XML_ParserFree)> parser(
            XML_ParserCreate("UTF-8"), XML_ParserFree);
        Handler<Sink> handler{sink};
        XML_SetUserData(parser.get(), &handler);
        XML_SetElementHandler(parser.get(), Handler<Sink>::start, Handler<Sink>::end);
        XML_Parse(parser.get(), text.data(), static_cast<int>(text.size()), XML_TRUE);
    }

private:
    std::string text;
};

}  // namespace

JobTypes expatJobs() {
    return readJobs<Elements>("expat");
}

}  // namespace bench
