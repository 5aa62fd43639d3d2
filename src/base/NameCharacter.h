#pragma once

#include <array>
#include <cstddef>

namespace kiv::detail {

using CharacterTable = std::array<bool, 256>;

/// All 256 bytes, true for the ASCII letters and digits, '&', '.' and '_'. A table, because one
/// look-up replaces up to nine comparisons a byte.
constexpr CharacterTable kWordCharacters = [] {
    CharacterTable table{};
    for (std::size_t c = '0'; c <= '9'; ++c) table[c] = true;
    for (std::size_t c = 'A'; c <= 'Z'; ++c) table[c] = true;
    for (std::size_t c = 'a'; c <= 'z'; ++c) table[c] = true;
    for (const char c : {'&', '.', '_'}) table[static_cast<unsigned char>(c)] = true;
    return table;
}();

/// The same with the space.
constexpr CharacterTable kNameCharacters = [] {
    CharacterTable table = kWordCharacters;
    table[' '] = true;
    return table;
}();

constexpr bool isWordCharacter(char c) {
    return kWordCharacters[static_cast<unsigned char>(c)];
}

/// A name character is a letter, a digit, or one of space, '&', '.' and '_'.
constexpr bool isNameCharacter(char c) {
    return kNameCharacters[static_cast<unsigned char>(c)];
}

}  // namespace kiv::detail
