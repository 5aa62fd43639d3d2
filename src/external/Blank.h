#pragma once

#include <string_view>

namespace kiv::detail {

/// A blank is a space, tab, line feed, vertical tab, form feed or carriage return: what
/// `std::isspace` accepts in the classic locale, whatever the global locale is.
constexpr bool isBlank(char c) {
    return c == ' ' || (c >= '\t' && c <= '\r');
}

constexpr std::string_view withoutLeadingBlanks(std::string_view text) {
    while (!text.empty() && isBlank(text.front())) text.remove_prefix(1);
    return text;
}

constexpr std::string_view withoutTrailingBlanks(std::string_view text) {
    while (!text.empty() && isBlank(text.back())) text.remove_suffix(1);
    return text;
}

constexpr std::string_view withoutOuterBlanks(std::string_view text) {
    return withoutTrailingBlanks(withoutLeadingBlanks(text));
}

}  // namespace kiv::detail
