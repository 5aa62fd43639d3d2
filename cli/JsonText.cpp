#include "JsonText.h"

#include <algorithm>
#include <nlohmann/json.hpp>

#include "Diagnostics.h"
#include "Status.h"

namespace kdx {
namespace {

bool isPlain(char c) {
    return c >= ' ' && c <= '~' && c != '"' && c != '\\';
}

}  // namespace

void appendJsonString(std::string& out, std::string_view text) {
    if (std::all_of(text.begin(), text.end(), isPlain))
        out.append(1, '"').append(text).append(1, '"');
    else
        out += jsonText(text);
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
