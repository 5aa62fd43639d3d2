#include "JsonText.h"

#include <nlohmann/json.hpp>

#include "ShownText.h"
#include "base/Status.h"

namespace kdx {
namespace {

using Json = nlohmann::ordered_json;

/// Whether JSON shows the text as it is. Looks at all of it, so that the compiler can take many
/// bytes at a time.
bool isPlain(std::string_view text) {
    bool plain = true;
    for (const char c : text) plain &= c >= ' ' && c <= '~' && c != '"' && c != '\\';
    return plain;
}

Json jsonOf(std::size_t number) {
    return number;
}

Json jsonOf(std::string_view text) {
    return text;
}

Json jsonOf(const std::vector<std::string>* texts) {
    return *texts;
}

Json jsonOf(const JsonMembers& members) {
    Json json = Json::object();
    for (const auto& [name, value] : members)
        json[name] = std::visit([](auto held) { return jsonOf(held); }, value);
    return json;
}

std::string withReplacements(const Json& json) {
    return json.dump(-1, ' ', false, Json::error_handler_t::replace);
}

std::string strict(const Json& json) {
    try {
        return json.dump();
    } catch (const Json::type_error&) {
        throw Trouble(
            "text that is no UTF-8 cannot be put into JSON: " + shown(withReplacements(json)) +
            "; convert the file first, as with iconv -f LATIN1 -t UTF-8");
    }
}

}  // namespace

void appendJsonString(std::string& out, std::string_view text) {
    if (!isPlain(text)) {
        out += strict(text);
        return;
    }
    out.append(1, '"').append(text).append(1, '"');
}

void appendShownJsonString(std::string& out, std::string_view text) {
    if (!isPlain(text)) {
        out += withReplacements(text);
        return;
    }
    out.append(1, '"').append(text).append(1, '"');
}

std::string jsonText(const JsonMembers& members) {
    return strict(jsonOf(members));
}

std::string shownJsonText(const JsonMembers& members) {
    return withReplacements(jsonOf(members));
}

}  // namespace kdx
