#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

#include "parser/LineShape.h"

// Where lines end, and what they look like, found for a stretch of text at once: a bit for each
// byte, set from sixteen or more bytes in one step, so that nothing waits for the end of one line
// before it looks at the next. What is asked of a line is then a matter of the bits from its first
// byte on.

namespace kiv::detail {

#ifdef __SSE2__

/// A bit for each byte of a stretch of text.
class Marks {
public:
    static constexpr std::size_t kBlock = 64;
    static constexpr std::size_t kBlocks = 64;
    /// So many bits of a window are right.
    static constexpr std::size_t kWindow = 57;

    void set(std::size_t block, std::uint64_t bits) { blocks[block] = bits; }

    /// The bits from a position on, the first one lowest; behind kWindow of them may stand zeros.
    std::uint64_t from(std::size_t position) const {
        std::uint64_t window = 0;
        std::memcpy(&window, reinterpret_cast<const char*>(blocks.data()) + position / 8,
                    sizeof window);
        return window >> position % 8;
    }

    /// The position of the first bit that is set; there must be one.
    std::size_t next(std::size_t position) const {
        std::size_t block = position / kBlock;
        std::uint64_t bits = blocks[block] >> position % kBlock << position % kBlock;
        while (bits == 0) bits = blocks[++block];
        return block * kBlock + static_cast<unsigned>(__builtin_ctzll(bits));
    }

private:
    std::array<std::uint64_t, kBlocks + 2> blocks{};  // what stands behind the stretch included
};

struct StretchMarks {
    Marks feeds;
    Marks spaces;
    Marks words;
    Marks hashes;
};

/// Marks so many blocks of a text, from the block of a number on.
using MarkBlocks = void (*)(const char* text, std::size_t first, std::size_t count,
                            StretchMarks& marks);

/// The ways to do it: the one that every processor has, and the widest that this one has.
MarkBlocks narrowMarkBlocks();
MarkBlocks widestMarkBlocks();

/// The marks of a stretch of text.
class TextMarks {
public:
    /// Marks the text from its first byte on, up to a limit. Behind its end stand line feeds.
    void read(std::string_view text);

    /// Whether a window on the marks begins at this byte, which does not lie in front of them.
    bool covers(const char* at) const { return at < lastWindow; }

    /// How many bytes stand in front of the first line feed in `text`, which begins in the stretch.
    std::size_t lineLength(std::string_view text) const {
        const std::size_t position = positionOf(text);
        const std::uint64_t window = marks.feeds.from(position);
        if (window != 0) return static_cast<unsigned>(__builtin_ctzll(window));
        const std::size_t feed = marks.feeds.next(position + Marks::kWindow);
        if (feed < size) return feed - position;
        return std::min(text.find('\n', size - position), text.size());
    }

    /// The same as shapeByBytes() for a line that begins in the stretch.
    LineShape shapeOf(std::string_view line) const {
        const std::size_t position = positionOf(line);
        const std::uint64_t word = marks.words.from(position);
        const std::uint64_t space = marks.spaces.from(position);
        const std::uint64_t stops = ~(word | space) | std::uint64_t{1} << Marks::kWindow;
        const auto nameEnd = static_cast<unsigned>(__builtin_ctzll(stops));
        if (nameEnd >= Marks::kWindow) return shapeByBytes(line);
        const auto indentation = static_cast<unsigned>(__builtin_ctzll(~space));
        const auto wordEnd =
            indentation + static_cast<unsigned>(__builtin_ctzll(~(word >> indentation)));
        return {indentation, wordEnd, nameEnd, hashIn(line, position, nameEnd)};
    }

private:
    std::size_t positionOf(std::string_view text) const {
        return static_cast<std::size_t>(text.data() - begin);
    }

    std::size_t hashIn(std::string_view line, std::size_t position, std::size_t nameEnd) const {
        if (line.size() >= Marks::kWindow) return std::min(line.find('#', nameEnd), line.size());
        const std::uint64_t end = std::uint64_t{1} << line.size();
        return static_cast<unsigned>(__builtin_ctzll(marks.hashes.from(position) | end));
    }

    const char* begin = nullptr;
    std::size_t size = 0;
    const char* lastWindow = nullptr;  // the end of the positions at which a window begins
    StretchMarks marks;
};

#else

/// The same with loops over bytes.
class TextMarks {
public:
    void read(std::string_view /*text*/) {}
    bool covers(const char* /*at*/) const { return true; }
    std::size_t lineLength(std::string_view text) const {
        return std::min(text.find('\n'), text.size());
    }
    LineShape shapeOf(std::string_view line) const { return shapeByBytes(line); }
};

#endif

}  // namespace kiv::detail
