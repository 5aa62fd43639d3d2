#pragma once

#include <cstddef>
#include <string_view>

namespace kiv::detail {

/// A blank is a space, tab, line feed, vertical tab, form feed or carriage return: what
/// `std::isspace` accepts in the classic locale, whatever the global locale is.
constexpr bool isBlank(char c) {
    return c == ' ' || (c >= '\t' && c <= '\r');
}

constexpr std::string_view withoutLeadingBlanks(std::string_view text) {
    // Indentation is mostly spaces, in pairs: two at a time halves the cost of a short line.
    std::size_t begin = 0;
    while (text.size() - begin >= 2 && text[begin] == ' ' && text[begin + 1] == ' ') begin += 2;
    while (begin < text.size() && isBlank(text[begin])) ++begin;
    text.remove_prefix(begin);
    return text;
}

constexpr std::string_view withoutTrailingBlanks(std::string_view text) {
    std::size_t end = text.size();
    while (end > 0 && isBlank(text[end - 1])) --end;
    return text.substr(0, end);
}

constexpr std::string_view withoutOuterBlanks(std::string_view text) {
    return withoutTrailingBlanks(withoutLeadingBlanks(text));
}

}  // namespace kiv::detail
