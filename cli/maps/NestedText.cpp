#include "NestedText.h"

#include <kiv/Error.h>
#include <kiv/KDXDocument.h>

#include <map>
#include <set>
#include <tuple>
#include <utility>

#include <nlohmann/json.hpp>

#include "base/Status.h"
#include "io/Output.h"
#include "text/JsonText.h"
#include "text/ShownText.h"

namespace kdx {
namespace {

using Json = nlohmann::json;
using kiv::KDXDocument;
using kiv::KDXReader;
using kiv::MiniKDXParser;

constexpr const char* kType = "type";
constexpr const char* kName = "name";
constexpr const char* kParameters = "parameters";
constexpr const char* kObjects = "objects";

/// The objects of several texts, merged where type and name are the same.
class ObjectTree {
public:
    struct Object {
        std::string type;
        std::string name;  ///< empty when it goes by its type
        std::map<std::string, std::pair<std::string, std::size_t>> parameters;  ///< value and text
        std::vector<std::size_t> objects;
    };

    explicit ObjectTree(Taken givenTaken) : taken(givenTaken) {}

    /// Adds the objects of a text.
    void add(std::string_view text, const std::function<bool(std::string_view)>& takesType) {
        ++texts;
        std::vector<std::size_t> open{kTop};
        bool skips = false;
        for (KDXReader reader(text); reader.next();) {
            const bool isObject = reader.kind() == MiniKDXParser::lineObject;
            if (isObject && reader.depth() == 0) skips = !takesType(reader.first());
            if (skips) continue;
            if (isObject) open.push_back(objectIn(open.back(), reader));
            if (reader.kind() == MiniKDXParser::lineParameter) addParameter(open.back(), reader);
            if (reader.kind() == MiniKDXParser::lineEnd) open.pop_back();
        }
    }

    const Object& top() const { return objects[kTop]; }
    const Object& object(std::size_t index) const { return objects[index]; }

private:
    static constexpr std::size_t kTop = 0;

    std::size_t objectIn(std::size_t parent, const KDXReader& reader) {
        const std::string type(reader.first());
        const std::string name(reader.second() == type ? std::string_view() : reader.second());
        const auto [entry, isNew] = indices.try_emplace({parent, type, name}, objects.size());
        if (isNew) {
            objects[parent].objects.push_back(objects.size());
            objects.push_back({type, name, {}, {}});
        }
        return entry->second;
    }

    void addParameter(std::size_t object, const KDXReader& reader) {
        auto& [value, text] = objects[object].parameters[std::string(reader.first())];
        if (text == texts || (text != 0 && taken == Taken::first)) return;
        value = reader.second();
        text = texts;
    }

    Taken taken;
    std::size_t texts = 0;           // counted from 1
    std::vector<Object> objects{1};  // the first stands for the top level
    std::map<std::tuple<std::size_t, std::string, std::string>, std::size_t> indices;
};

void appendHead(std::string& out, const ObjectTree::Object& object) {
    out.append("{\"").append(kType).append("\":");
    appendJsonString(out, object.type);
    out.append(",\"").append(kName).append("\":");
    appendJsonString(out, object.name);
    out.append(",\"").append(kParameters).append("\":{");
    const char* separator = "";
    for (const auto& [name, value] : object.parameters) {
        out += separator;
        appendJsonString(out, name);
        out += ':';
        appendJsonString(out, value.first);
        separator = ",";
    }
    out.append("},\"").append(kObjects).append("\":[");
}

/// Prints what is in the top level, and all that is in that.
void print(const ObjectTree& tree) {
    struct Level {
        const ObjectTree::Object* object;
        std::size_t next = 0;
    };
    Printer printer;
    printer.text += '[';
    std::vector<Level> open{{&tree.top()}};
    while (!open.empty()) {
        const auto& inside = open.back().object->objects;
        const std::size_t next = open.back().next++;
        if (next < inside.size()) {
            printer.text += next == 0 ? "\n" : ",\n";
            appendHead(printer.text, tree.object(inside[next]));
            open.push_back({&tree.object(inside[next])});
        } else {
            open.pop_back();
            printer.text += open.empty() ? "]\n" : "]}";
        }
        printer.printIfLong();
    }
    printer.print();
}

/// Makes a document of a nested map.
class NestedReader {
public:
    explicit NestedReader(std::size_t limit) : maxDepth(limit) {}

    std::string read(const Json& list) {
        if (!list.is_array()) fail("not an array of objects");
        open.push_back({&list, 0, document.root(), 0});
        while (!open.empty()) step();
        return document.text();
    }

private:
    struct Level {
        const Json* list;
        std::size_t next;
        KDXDocument::Node node;
        std::size_t pathLength;  // of the path in front of it
    };

    void step() {
        Level& level = open.back();
        if (level.next == level.list->size()) {
            path.resize(level.pathLength);
            open.pop_back();
            return;
        }
        addObject((*level.list)[level.next++]);
    }

    void addObject(const Json& json) {
        if (!json.is_object()) fail("not an object with type, name, parameters and objects");
        const std::size_t length = path.size();
        const std::string type = textIn(json, kType);
        const std::string name = textIn(json, kName);
        kiv::appendLevel(path, type, name);
        if (open.size() > maxDepth) fail("deeper than --max-depth allows");
        const KDXDocument::Node node =
            carried([&] { return document.addObject(lastInOpen(), type, name); });
        static const Json kNone = Json::array();
        open.push_back({&kNone, 0, node, length});
        for (const auto& member : json.items()) addMember(member.key(), member.value());
    }

    void addMember(const std::string& key, const Json& value) {
        if (key == kParameters && value.is_object()) {
            for (const auto& parameter : value.items())
                carried([&] {
                    return document.addParameter(lastInOpen(), parameter.key(),
                                                 textOf(parameter.value()));
                });
        } else if (key == kObjects && value.is_array()) {
            open.back().list = &value;
        } else if (key != kType && key != kName) {
            fail("not an object with type, name, parameters and objects");
        }
    }

    KDXDocument::Where lastInOpen() const { return KDXDocument::lastIn(open.back().node); }

    std::string textIn(const Json& json, const char* key) const {
        const auto member = json.find(key);
        return member == json.end() ? std::string() : textOf(*member);
    }

    std::string textOf(const Json& value) const {
        if (value.is_string()) return value.get<std::string>();
        if (value.is_number_integer() || value.is_boolean()) return value.dump();
        // What is nested is not shown: dump() calls itself for each level of it.
        fail("a value is a string, not " +
             (value.is_structured() ? std::string("an ") + value.type_name() : value.dump()));
    }

    /// Does what adds something to the document. @throws Trouble when that is refused.
    template <typename Add>
    KDXDocument::Node carried(Add add) const {
        try {
            return add();
        } catch (const kiv::data::invalid& refusal) {
            throw Trouble(shown(path) + ": " + refusal.message());
        }
    }

    [[noreturn]] void fail(const std::string& why) const {
        throw Trouble("is no nested map" + (path.empty() ? path : " at " + shown(path)) + ": " +
                      why);
    }

    std::size_t maxDepth;
    KDXDocument document;
    std::vector<Level> open;
    std::string path;
};

/// Reads JSON in which no object has a key twice: of its values, all but the last would be lost.
Json parseJson(std::string_view text) {
    std::vector<std::set<std::string>> keys;  // of the open objects
    const auto check = [&](int /*depth*/, Json::parse_event_t event, const Json& parsed) {
        if (event == Json::parse_event_t::object_start) keys.emplace_back();
        if (event == Json::parse_event_t::object_end) keys.pop_back();
        if (event != Json::parse_event_t::key) return true;
        const auto& key = parsed.get_ref<const std::string&>();
        if (!keys.back().insert(key).second)
            throw Trouble("is no nested map: an object has \"" + shown(key) + "\" twice");
        return true;
    };
    try {
        return Json::parse(text, check);
    } catch (const Json::parse_error& error) {
        const std::string_view what = error.what();
        throw Trouble("is no JSON: " + shown(what.substr(what.find("] ") + 2)));
    }
}

}  // namespace

void printNested(const std::vector<std::string_view>& texts, Taken taken,
                 const std::function<bool(std::string_view type)>& takesType) {
    ObjectTree tree(taken);
    for (const std::string_view text : texts) tree.add(text, takesType);
    print(tree);
}

std::string readNested(std::string_view json, const Settings& settings,
                       const kiv::KDXFormatting::Style& style) {
    return formatKDX(NestedReader(settings.maxDepth).read(parseJson(json)), style);
}

}  // namespace kdx
