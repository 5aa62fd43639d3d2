#pragma once

#include <nlohmann/json_fwd.hpp>

#include <string>
#include <string_view>

namespace kdx {

/// Appends a JSON string. @throws Trouble for text that is no UTF-8, which JSON cannot hold.
void appendJsonString(std::string& out, std::string_view text);

/// JSON on one line. @throws Trouble for text that is no UTF-8.
std::string jsonText(const nlohmann::ordered_json& json);

}  // namespace kdx
