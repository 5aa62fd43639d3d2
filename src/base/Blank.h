#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "base/MachineWord.h"

namespace kiv::detail {

/// A blank is a space, tab, line feed, vertical tab, form feed or carriage return: what
/// `std::isspace` accepts in the classic locale, whatever the global locale is.
constexpr bool isBlank(char c) {
    // The first comparison settles nearly every character that is asked about.
    return static_cast<unsigned char>(c) <= ' ' && (c == ' ' || (c >= '\t' && c <= '\r'));
}

inline std::string_view withoutLeadingBlanks(std::string_view text) {
    const char* begin = text.data();
    const char* const end = begin + text.size();
    while (begin != end && isBlank(*begin)) ++begin;
    return {begin, static_cast<std::size_t>(end - begin)};
}

/// How many spaces a line begins with.
inline std::size_t leadingSpaces(std::string_view line) {
    constexpr std::uint64_t spaces = 0x2020202020202020U;
    const char* const begin = line.data();
    const char* const end = begin + line.size();
    const char* at = begin;
    for (; end - at >= 8; at += 8) {
        const std::uint64_t word = wordAt(at);
        if (word != spaces)
            return static_cast<std::size_t>(at - begin) + firstByteSet(word ^ spaces);
    }
    while (at != end && *at == ' ') ++at;
    return static_cast<std::size_t>(at - begin);
}

/// The same as withoutLeadingBlanks(), for a line, which may be indented deeply.
inline std::string_view withoutIndentation(std::string_view line) {
    line.remove_prefix(leadingSpaces(line));
    return withoutLeadingBlanks(line);
}

inline std::string_view withoutTrailingBlanks(std::string_view text) {
    std::size_t end = text.size();
    while (end > 0 && isBlank(text[end - 1])) --end;
    return {text.data(), end};
}

inline std::string_view withoutOuterBlanks(std::string_view text) {
    return withoutTrailingBlanks(withoutLeadingBlanks(text));
}

}  // namespace kiv::detail
