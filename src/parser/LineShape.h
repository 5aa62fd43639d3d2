#pragma once

#include <algorithm>
#include <cstddef>
#include <string_view>

#include "base/Blank.h"
#include "base/NameCharacter.h"

#ifdef __SSE2__
#include <emmintrin.h>

#include <cstdint>
#endif

// What can be told of a line before it is known what it is.
//
// A loop over the bytes of a line ends where the processor does not expect it, at nearly every
// line, and starts again from there: that is a fifth of the time of a re-indentation. Where the
// processor can look at sixteen bytes in one step, lines of common length need no loop.

namespace kiv::detail {

struct LineShape {
    std::size_t spaces;   // which the line begins with
    std::size_t wordEnd;  // the end of the name characters behind them, up to a further space
    std::size_t nameEnd;  // the end of all name characters behind them
    std::size_t hash;     // the first '#'; the end of the line when there is none
};

/// The shape of a line, behind which stands no name character.
inline LineShape shapeByBytes(std::string_view line) {
    const char* const begin = line.data();  // unlike line[], which must not reach behind the end
    const std::size_t spaces = leadingSpaces(line);
    std::size_t wordEnd = spaces;
    while (isWordCharacter(begin[wordEnd])) ++wordEnd;
    std::size_t nameEnd = wordEnd;
    while (isNameCharacter(begin[nameEnd])) ++nameEnd;
    return {spaces, wordEnd, nameEnd, std::min(line.find('#', nameEnd), line.size())};
}

/// The end of the name characters in a line from `begin` on. Behind the line stands none.
inline std::size_t nameEndOf(std::string_view line, std::size_t begin) {
    const char* end = line.data() + begin;
    while (isNameCharacter(*end)) ++end;
    return static_cast<std::size_t>(end - line.data());
}

#ifdef __SSE2__

/// Sixteen bytes. In a mask of them, the lowest bit stands for the first.
using ByteBlock = __m128i;

inline ByteBlock blockAt(const char* begin) {
    return _mm_loadu_si128(reinterpret_cast<const __m128i*>(begin));
}

inline std::uint32_t maskOf(ByteBlock comparison) {
    return static_cast<std::uint32_t>(_mm_movemask_epi8(comparison));
}

inline ByteBlock equal(ByteBlock bytes, char c) {
    return _mm_cmpeq_epi8(bytes, _mm_set1_epi8(c));
}

/// Comparisons are signed, so that the first of the range is moved to the lowest value.
inline ByteBlock inRange(ByteBlock bytes, char first, char last) {
    const ByteBlock moved = _mm_add_epi8(bytes, _mm_set1_epi8(static_cast<char>(-128 - first)));
    return _mm_cmplt_epi8(moved, _mm_set1_epi8(static_cast<char>(-128 + last - first + 1)));
}

inline ByteBlock wordCharacters(ByteBlock bytes) {
    const ByteBlock lowered = _mm_or_si128(bytes, _mm_set1_epi8('a' - 'A'));
    // '&' and '.' differ in one bit.
    const ByteBlock ampersandOrDot = equal(_mm_or_si128(bytes, _mm_set1_epi8('&' ^ '.')), '.');
    const ByteBlock marks = _mm_or_si128(ampersandOrDot, equal(bytes, '_'));
    const ByteBlock digits = inRange(bytes, '0', '9');
    return _mm_or_si128(_mm_or_si128(inRange(lowered, 'a', 'z'), digits), marks);
}

/// The same as shapeByBytes(). From the line's first byte on, `readable` bytes may be read: from
/// sixteen on, a line of at most 32 bytes needs no loop.
inline LineShape shapeOf(std::string_view line, std::size_t readable) {
    if (readable < 16 || line.size() > 32) return shapeByBytes(line);
    // Where both are in the text, nothing waits for the line's length.
    const std::size_t lastBegin = std::min(readable - 16, std::size_t{16});
    const ByteBlock first = blockAt(line.data());
    const ByteBlock last = blockAt(line.data() + lastBegin);  // may overlap with the first
    const auto joined = [lastBegin](ByteBlock inFirst, ByteBlock inLast) {
        return maskOf(inFirst) | std::uint64_t{maskOf(inLast)} << lastBegin;
    };
    const auto endOfRun = [](std::uint64_t mask, std::size_t begin) {
        return begin + static_cast<unsigned>(__builtin_ctzll(~mask >> begin));
    };
    const std::uint64_t lineEnd = std::uint64_t{1} << line.size();
    const std::uint64_t space = joined(equal(first, ' '), equal(last, ' '));
    const std::uint64_t word = joined(wordCharacters(first), wordCharacters(last));
    const std::uint64_t hashes = joined(equal(first, '#'), equal(last, '#')) | lineEnd;
    const std::size_t spaces = endOfRun(space, 0);
    return {spaces, endOfRun(word, spaces), endOfRun(word | space, 0), endOfRun(~hashes, 0)};
}

/// Whether a line holds a backslash. From its first byte on, `readable` bytes may be read.
inline bool holdsBackslash(std::string_view line, std::size_t readable) {
    if (readable < 16 || line.size() > 32) return line.find('\\') != std::string_view::npos;
    const std::size_t lastBegin = std::min(readable - 16, std::size_t{16});
    const auto backslashesAt = [&](std::size_t begin) {
        return std::uint64_t{maskOf(equal(blockAt(line.data() + begin), '\\'))} << begin;
    };
    const std::uint64_t inLine = (std::uint64_t{1} << line.size()) - 1;
    return ((backslashesAt(0) | backslashesAt(lastBegin)) & inLine) != 0;
}

#else

inline LineShape shapeOf(std::string_view line, std::size_t /*readable*/) {
    return shapeByBytes(line);
}

inline bool holdsBackslash(std::string_view line, std::size_t /*readable*/) {
    return line.find('\\') != std::string_view::npos;
}

#endif

}  // namespace kiv::detail
