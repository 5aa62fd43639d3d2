// pugixml: a tree made in place, and a walk over it.

#include <pugixml.hpp>

#include "ReadJob.h"

namespace bench {
namespace {

/// An element is an object, an attribute a parameter.
struct Attributes {
    static constexpr const char* kFormat = "xml";
    static constexpr unsigned int kOptions = pugi::parse_minimal | pugi::parse_escapes;

    template <typename Sink>
    static void readChildren(pugi::xml_node element, Sink& sink) {
        for (const pugi::xml_node child : element.children()) {
            pugi::xml_attribute attribute = child.first_attribute();
            sink.openObject(child.name(), attribute.value());
            while ((attribute = attribute.next_attribute()))
                sink.parameter(attribute.name(), attribute.value());
            readChildren(child, sink);
            sink.closeObject();
        }
    }
};

/// An element that has an attribute is an object, another one a parameter. Line ends are made one
/// kind in the text of an element, as a document of ours knows each kind: the default options.
struct Elements {
    static constexpr const char* kFormat = "elements.xml";
    static constexpr unsigned int kOptions = pugi::parse_default;

    template <typename Sink>
    static void readChildren(pugi::xml_node element, Sink& sink) {
        for (const pugi::xml_node child : element.children()) {
            const pugi::xml_attribute name = child.first_attribute();
            if (!name) {
                sink.parameter(child.name(), child.child_value());
                continue;
            }
            sink.openObject(child.name(), name.value());
            readChildren(child, sink);
            sink.closeObject();
        }
    }
};

template <typename Shape>
class InPlace {
public:
    static constexpr const char* kFormat = Shape::kFormat;

    void load(std::string xml) { text = std::move(xml); }

    template <typename Sink>
    void read(Sink& sink) {
        document.load_buffer_inplace(text.data(), text.size(), Shape::kOptions,
                                     pugi::encoding_utf8);
        Shape::readChildren(document.document_element(), sink);
    }

private:
    std::string text;
    pugi::xml_document document;
};

}  // namespace

JobTypes pugixmlJobs() {
    JobTypes jobs = readJobs<InPlace<Attributes>>("pugixml");
    jobs.push_back(touchJob<InPlace<Attributes>>("document", "pugixml"));
    jobs.push_back(touchJob<InPlace<Elements>>("document", "pugixml elements"));
    jobs.push_back(firstTouchJob<InPlace<Attributes>>("first-document", "pugixml"));
    jobs.push_back(firstTouchJob<InPlace<Elements>>("first-document", "pugixml elements"));
    return jobs;
}

}  // namespace bench
