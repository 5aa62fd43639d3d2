#pragma once

#include <array>
#include <cstddef>

namespace kiv::detail {

/// All 256 bytes, true for what names are made of besides spaces: the ASCII letters and digits,
/// '&', '.' and '_'. A table, because one look-up replaces up to nine comparisons a byte.
constexpr std::array<bool, 256> kWordCharacters = [] {
    std::array<bool, 256> table{};
    for (std::size_t c = '0'; c <= '9'; ++c) table[c] = true;
    for (std::size_t c = 'A'; c <= 'Z'; ++c) table[c] = true;
    for (std::size_t c = 'a'; c <= 'z'; ++c) table[c] = true;
    for (const char c : {'&', '.', '_'}) table[static_cast<unsigned char>(c)] = true;
    return table;
}();

constexpr bool isWordCharacter(char c) {
    return kWordCharacters[static_cast<unsigned char>(c)];
}

/// A name character is a letter, a digit, or one of space, '&', '.' and '_'.
constexpr bool isNameCharacter(char c) {
    return c == ' ' || isWordCharacter(c);
}

}  // namespace kiv::detail
