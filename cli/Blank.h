#pragma once

#include <cstddef>
#include <string_view>

namespace kdx {

/// The blanks of KDX: space, tab, line feed, vertical tab, form feed, carriage return.
constexpr bool isBlank(char c) {
    return c == ' ' || (c >= '\t' && c <= '\r');
}

inline std::string_view withoutLeadingBlanks(std::string_view text) {
    std::size_t begin = 0;
    while (begin < text.size() && isBlank(text[begin])) ++begin;
    return text.substr(begin);
}

inline std::string_view withoutTrailingBlanks(std::string_view text) {
    while (!text.empty() && isBlank(text.back())) text.remove_suffix(1);
    return text;
}

inline std::string_view withoutOuterBlanks(std::string_view text) {
    return withoutTrailingBlanks(withoutLeadingBlanks(text));
}

}  // namespace kdx
