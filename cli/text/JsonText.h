#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

namespace kdx {

/// A value in a JSON object: a number, a text or a list of texts, which it refers to.
using JsonValue = std::variant<std::size_t, std::string_view, const std::vector<std::string>*>;

/// The members of a JSON object, each under its name, in their order.
using JsonMembers = std::vector<std::pair<const char*, JsonValue>>;

/// Appends a JSON string. @throws Trouble for text that is no UTF-8, which JSON cannot hold.
void appendJsonString(std::string& out, std::string_view text);

/// The same with a replacement character for whatever is no UTF-8.
void appendShownJsonString(std::string& out, std::string_view text);

/// A JSON object on one line. @throws Trouble for text that is no UTF-8.
std::string jsonText(const JsonMembers& members);

/// The same with a replacement character for whatever is no UTF-8, as messages need it.
std::string shownJsonText(const JsonMembers& members);

}  // namespace kdx
