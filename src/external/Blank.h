#pragma once

#include <cstddef>
#include <cstring>
#include <string_view>

namespace kiv::detail {

/// A blank is a space, tab, line feed, vertical tab, form feed or carriage return: what
/// `std::isspace` accepts in the classic locale, whatever the global locale is.
constexpr bool isBlank(char c) {
    return c == ' ' || (c >= '\t' && c <= '\r');
}

inline std::string_view withoutLeadingBlanks(std::string_view text) {
    // Indentation is mostly spaces. Eight compare as one machine word, which takes a sixth of the
    // instructions that a deeply indented line costs otherwise.
    constexpr std::string_view spaces = "        ";
    const char* begin = text.data();
    const char* const end = begin + text.size();
    while (end - begin >= 8 && std::memcmp(begin, spaces.data(), 8) == 0) begin += 8;
    while (begin != end && isBlank(*begin)) ++begin;
    return {begin, static_cast<std::size_t>(end - begin)};
}

inline std::string_view withoutTrailingBlanks(std::string_view text) {
    std::size_t end = text.size();
    while (end > 0 && isBlank(text[end - 1])) --end;
    return text.substr(0, end);
}

inline std::string_view withoutOuterBlanks(std::string_view text) {
    return withoutTrailingBlanks(withoutLeadingBlanks(text));
}

}  // namespace kiv::detail
