#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace kdx::lsp {

/// A place as editors count: lines from 0, and in them UTF-16 code units.
struct Position {
    std::size_t line = 0;
    std::size_t character = 0;
};

/// Some bytes of a text.
struct Span {
    std::size_t begin = 0;
    std::size_t end = 0;

    bool touches(std::size_t offset) const { return begin <= offset && offset <= end; }
};

/// A text as an editor has it, in UTF-8: the one place where positions of editors become offsets in
/// bytes, and back. Lines end in LF, CR LF, or CR, as they do for editors; for KDX they end in LF.
class EditorText {
public:
    explicit EditorText(std::string givenText = {});

    const std::string& text() const { return content; }

    /// What lies behind a line's end becomes its end, what lies behind the last line the end of the
    /// text, and the middle of a character its begin.
    std::size_t offsetOf(const Position& position) const;

    /// Between CR and LF, where no position is, that in front of them. Takes time in proportion to
    /// the line; of ascending offsets in it, to what lies between.
    Position positionOf(std::size_t offset) const;

    /// The offset of the beginning of the line that holds an offset.
    std::size_t lineBegin(std::size_t offset) const;

    /// Whether an offset lies between CR and LF.
    bool isInsideLineEnd(std::size_t offset) const;

    /// Replaces what stands between two offsets, in whatever order they come.
    void replace(Span span, std::string_view replacement);

private:
    bool isLineBegin(std::size_t offset) const;
    std::size_t lineEnd(std::size_t line) const;
    std::vector<std::size_t> linesIn(std::size_t begin, std::size_t end) const;

    std::string content;
    std::vector<std::size_t> lines;      // where each begins
    mutable std::size_t lastOffset = 0;  // whose position was asked for last
    mutable Position last;
};

}  // namespace kdx::lsp
