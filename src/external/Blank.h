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
    const char* begin = text.data();
    const char* const end = begin + text.size();
    // Indentation is spaces, as a rule: looking for them first takes half the instructions.
    while (begin != end && *begin == ' ') ++begin;
    while (begin != end && isBlank(*begin)) ++begin;
    return {begin, static_cast<std::size_t>(end - begin)};
}

/// The same for a line, which may be indented deeply.
inline std::string_view withoutIndentation(std::string_view line) {
    // Eight spaces compare as one machine word.
    constexpr std::string_view spaces = "        ";
    while (line.size() >= spaces.size() &&
           std::memcmp(line.data(), spaces.data(), spaces.size()) == 0)
        line.remove_prefix(spaces.size());
    return withoutLeadingBlanks(line);
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
