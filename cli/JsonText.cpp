#include "JsonText.h"

#include <nlohmann/json.hpp>

#include "Diagnostics.h"
#include "Status.h"

namespace kdx {
namespace {

/// Whether JSON shows the text as it is. Looks at all of it, so that the compiler can take many
/// bytes at a time.
bool isPlain(std::string_view text) {
    bool plain = true;
    for (const char c : text) plain &= c >= ' ' && c <= '~' && c != '"' && c != '\\';
    return plain;
}

}  // namespace

void appendJsonString(std::string& out, std::string_view text) {
    if (!isPlain(text)) {
        out += jsonText(text);
        return;
    }
    out += '"';
    out += text;
    out += '"';
}

std::string jsonText(const nlohmann::ordered_json& json) {
    try {
        return json.dump();
    } catch (const nlohmann::ordered_json::type_error&) {
        using Handler = nlohmann::ordered_json::error_handler_t;
        throw Trouble("text that is no UTF-8 cannot be put into JSON: " +
                      shown(json.dump(-1, ' ', false, Handler::replace)) +
                      "; convert the file first, as with iconv -f LATIN1 -t UTF-8");
    }
}

}  // namespace kdx
