#include "EditJson.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <initializer_list>
#include <set>
#include <string>

#include "text/ShownText.h"

namespace kdx {
namespace {

using Json = nlohmann::json;

/// Of a name that stands twice, a parser would take one of the two unasked.
Json parseOnce(std::string_view line) {
    std::set<std::string> names;
    return Json::parse(line, [&](int depth, Json::parse_event_t event, const Json& parsed) {
        if (depth != 1 || event != Json::parse_event_t::key) return true;
        const auto& name = parsed.get_ref<const std::string&>();
        if (!names.insert(name).second) throw Trouble("the edit has " + shownName(name) + " twice");
        return true;
    });
}

/// One line of the list, whose members are taken one by one.
class Members {
public:
    explicit Members(std::string_view line) : json(parseOnce(line)) {
        if (!json.is_object()) throw Trouble("an edit is a JSON object");
    }

    bool has(const char* name) const { return json.contains(name); }

    std::string text(const char* name) const {
        if (!has(name)) throw Trouble(std::string("the edit needs \"") + name + '"');
        const Json& value = json.at(name);
        if (!value.is_string()) throw Trouble(std::string("\"") + name + "\" has to be a text");
        return value.get<std::string>();
    }

    std::optional<std::string> optionalText(const char* name) const {
        return has(name) ? std::make_optional(text(name)) : std::nullopt;
    }

    bool isTrue(const char* name) const {
        if (!has(name)) return false;
        if (!json.at(name).is_boolean())
            throw Trouble(std::string("\"") + name + "\" has to be true or false");
        return json.at(name).get<bool>();
    }

    kiv::KDXSteps path(const char* name) const {
        if (!has(name) || !json.at(name).is_array()) return kiv::readPath(text(name));
        kiv::KDXSteps steps;
        for (const Json& pair : json.at(name)) steps.push_back(stepOf(pair));
        return steps;
    }

    std::vector<kiv::KDXSteps> textPaths(std::initializer_list<const char*> names) const {
        std::vector<kiv::KDXSteps> paths;
        for (const char* name : names)
            if (has(name) && !json.at(name).is_array()) paths.push_back(path(name));
        return paths;
    }

    kiv::KDXSteps objectPath(const char* name) const {
        kiv::KDXSteps steps = path(name);
        if (steps.empty()) throw Trouble("the empty path names no object");
        return steps;
    }

    /// A member that means nothing may be a slip of the pen.
    void requireOnly(std::initializer_list<std::string_view> names) const {
        for (const auto& [name, value] : json.items())
            if (std::find(names.begin(), names.end(), name) == names.end())
                throw Trouble("the edit has no use for " + shownName(name));
    }

private:
    static kiv::KDXStep stepOf(const Json& pair) {
        if (!pair.is_array() || pair.size() != 2 || !pair[0].is_string() || !pair[1].is_string())
            throw Trouble("a step of a path is a pair of texts: [TYPE, NAME]");
        return {pair[0].get<std::string>(), pair[1].get<std::string>(), false};
    }

    Json json;
};

Target targetOf(const Members& members, const char* kind) {
    return {members.objectPath(kind), members.optionalText("name")};
}

void requireAtMostOne(const Members& members, std::initializer_list<const char*> names) {
    const auto has = [&](const char* name) { return members.has(name); };
    if (std::count_if(names.begin(), names.end(), has) > 1)
        throw Trouble("the edit names more than one place");
}

SetEdit setEdit(const Members& members) {
    members.requireOnly({"set", "name", "value", "first", "before", "after"});
    requireAtMostOne(members, {"first", "before", "after"});
    SetEdit edit{members.objectPath("set"), members.text("name"), members.text("value")};
    if (members.isTrue("first")) edit.side = SetEdit::Side::first;
    if (members.has("before")) edit.side = SetEdit::Side::before;
    if (members.has("after")) edit.side = SetEdit::Side::after;
    for (const char* side : {"before", "after"})
        if (members.has(side)) edit.neighbour = members.text(side);
    return edit;
}

UnsetEdit unsetEdit(const Members& members) {
    members.requireOnly({"unset", "name"});
    return {targetOf(members, "unset")};
}

RenameEdit renameEdit(const Members& members) {
    members.requireOnly({"rename", "name", "to", "type"});
    RenameEdit edit{targetOf(members, "rename"), members.optionalText("to"),
                    members.optionalText("type")};
    if (edit.target.name && edit.type) throw Trouble("a parameter has no type");
    if (!edit.name && !edit.type) throw Trouble("the edit needs \"to\"");
    return edit;
}

MoveEdit moveEdit(const Members& members) {
    members.requireOnly({"move", "name", "into", "first", "before", "after"});
    requireAtMostOne(members, {"into", "before", "after"});
    requireAtMostOne(members, {"first", "before", "after"});
    const Target target = targetOf(members, "move");
    if (members.has("before"))
        return {target, MoveEdit::Side::before, members.objectPath("before")};
    if (members.has("after")) return {target, MoveEdit::Side::after, members.objectPath("after")};
    const bool isFirst = members.isTrue("first");
    return {target, isFirst ? MoveEdit::Side::firstInto : MoveEdit::Side::into,
            members.path("into")};
}

Edit readEdit(std::string_view line, std::size_t number) {
    const Members members(line);
    if (members.has("set")) return {setEdit(members), number, members.textPaths({"set"})};
    if (members.has("unset")) return {unsetEdit(members), number, members.textPaths({"unset"})};
    if (members.has("rename")) return {renameEdit(members), number, members.textPaths({"rename"})};
    if (members.has("move"))
        return {moveEdit(members), number, members.textPaths({"move", "into", "before", "after"})};
    throw Trouble("an edit is one of \"set\", \"unset\", \"rename\" and \"move\"");
}

/// Leaves out the line, which the parser counts in what it is given. What it quotes may be long.
std::string whyNoJson(const Json::exception& error) {
    constexpr std::size_t kLongest = 240;
    std::string_view what = error.what();
    for (const std::string_view lead : {"] ", "line 1, "})
        if (what.find(lead) != std::string_view::npos)
            what.remove_prefix(what.find(lead) + lead.size());
    return "is no JSON: " + kiv::visibleText(firstColumns(what, kLongest));
}

}  // namespace

std::vector<Edit> readEdits(std::string_view text) {
    std::vector<Edit> edits;
    for (std::size_t number = 1; !text.empty(); ++number) {
        const std::size_t length = std::min(text.find('\n'), text.size());
        const std::string_view line = text.substr(0, length);
        text.remove_prefix(std::min(length + 1, text.size()));
        if (line.find_first_not_of(" \t\r") == std::string_view::npos) continue;
        const auto fail = [&](const std::string& why) {
            return Trouble("line " + std::to_string(number) + " of the edits: " + why);
        };
        try {
            edits.push_back(readEdit(line, number));
        } catch (const Json::exception& error) {
            throw fail(whyNoJson(error));
        } catch (const Trouble& trouble) {
            throw fail(trouble.what());
        }
    }
    return edits;
}

}  // namespace kdx
