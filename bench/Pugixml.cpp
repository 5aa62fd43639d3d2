// pugixml: a tree made in place, and a walk over it.

#include <pugixml.hpp>

#include "ReadJob.h"

namespace bench {
namespace {

template <typename Sink>
void readChildren(pugi::xml_node element, Sink& sink) {
    for (const pugi::xml_node child : element.children()) {
        pugi::xml_attribute attribute = child.first_attribute();
        sink.openObject(child.name(), attribute.value());
        while ((attribute = attribute.next_attribute()))
            sink.parameter(attribute.name(), attribute.value());
        readChildren(child, sink);
        sink.closeObject();
    }
}

class InPlace {
public:
    static constexpr const char* kFormat = "xml";

    void load(std::string xml) { text = std::move(xml); }

    template <typename Sink>
    void read(Sink& sink) {
        document.load_buffer_inplace(text.data(), text.size(),
                                     pugi::parse_minimal | pugi::parse_escapes,
                                     pugi::encoding_utf8);
        readChildren(document.document_element(), sink);
    }

private:
    std::string text;
    pugi::xml_document document;
};

}  // namespace

JobTypes pugixmlJobs() {
    JobTypes jobs = readJobs<InPlace>("pugixml");
    jobs.push_back(touchJob<InPlace>("document", "pugixml"));
    return jobs;
}

}  // namespace bench
