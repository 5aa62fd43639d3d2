#pragma once

#include <array>
#include <cstddef>

namespace kiv::detail {

/// All 256 bytes, true for the name characters: the ASCII letters and digits, space, '&', '.' and
/// '_'. A table, because one look-up replaces up to ten comparisons for each byte of a name.
constexpr std::array<bool, 256> kNameCharacters = [] {
    std::array<bool, 256> table{};
    for (std::size_t c = '0'; c <= '9'; ++c) table[c] = true;
    for (std::size_t c = 'A'; c <= 'Z'; ++c) table[c] = true;
    for (std::size_t c = 'a'; c <= 'z'; ++c) table[c] = true;
    for (const char c : {' ', '&', '.', '_'}) table[static_cast<std::size_t>(c)] = true;
    return table;
}();

constexpr bool isNameCharacter(char c) {
    return kNameCharacters[static_cast<unsigned char>(c)];
}

}  // namespace kiv::detail
