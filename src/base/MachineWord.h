#pragma once

#include <array>
#include <cassert>
#include <cstddef>
#include <cstdint>
#include <cstring>

// Eight bytes of a text as one number, for what a loop over bytes would take several times as long
// for: the processor often guesses wrong how many turns a loop takes.

namespace kiv::detail {

/// The eight bytes at `text`.
inline std::uint64_t wordAt(const char* text) {
    std::uint64_t word = 0;
    std::memcpy(&word, text, sizeof word);
    return word;
}

/// The number of the first byte in memory that is not 0; there must be one.
inline std::size_t firstByteSet(std::uint64_t word) {
    assert(word != 0);
#if defined(__GNUC__) && __BYTE_ORDER__ == __ORDER_LITTLE_ENDIAN__
    return static_cast<unsigned>(__builtin_ctzll(word)) / 8;
#else
    std::array<char, sizeof word> bytes{};
    std::memcpy(bytes.data(), &word, sizeof word);
    std::size_t index = 0;
    while (bytes[index] == 0) ++index;
    return index;
#endif
}

}  // namespace kiv::detail
