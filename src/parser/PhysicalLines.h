#pragma once

#include <algorithm>
#include <cstddef>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "parser/LineShape.h"
#include "parser/TextMarks.h"

namespace kiv::detail {

/// The physical lines of a text, ended by line feeds. A line feed at the very end starts no further
/// line. To be classified, a last line without a line feed must be the end of a std::string.
class TextLines {
public:
    explicit TextLines(std::string_view text) : at(text.data()), end(at + text.size()) {}

    /// Makes `line` the next line, a view of the text.
    /// @return false when there is none.
    bool next(std::string_view& line) {
        if (at == end) return false;
        if (!marks.covers(at)) marks.read({at, unread()});
        line = {at, marks.lineLength({at, unread()})};
        at += line.size();
        at += at == end ? 0 : 1;
        return true;
    }

    /// The same; the lines must be asked for in their order.
    bool read(std::size_t /*index*/, std::string_view& line) { return next(line); }

    /// The shape of the line read last.
    LineShape shapeOf(std::string_view line) const { return marks.shapeOf(line); }

    /// How many bytes stand behind the line read last.
    std::size_t unread() const { return static_cast<std::size_t>(end - at); }

    /// Goes on with another text.
    void restart(std::string_view text) {
        at = text.data();
        end = at + text.size();
        marks = {};
    }

private:
    // Apart: read as a pair, soon after each was written, they would have to be waited for.
    const char* at;
    const char* end;
    TextMarks marks;
};

/// The same for a text behind which memory may end: a last line without a line feed is copied.
class BorrowedTextLines {
public:
    explicit BorrowedTextLines(std::string_view text)
        : lines(text.substr(0, text.rfind('\n') + 1)), lastLine(text.substr(lines.unread())) {}

    bool read(std::size_t /*index*/, std::string_view& line) {
        if (lines.next(line)) return true;
        if (lastLine.empty()) return false;
        copy = std::exchange(lastLine, {});
        lines.restart(copy);
        return lines.next(line);
    }

    LineShape shapeOf(std::string_view line) const { return lines.shapeOf(line); }
    std::size_t unread() const { return lines.unread() + lastLine.size(); }

private:
    TextLines lines;
    std::string_view lastLine;
    std::string copy;
};

/// The physical lines in a list that may change between two calls.
class ListedLines {
public:
    explicit ListedLines(const std::vector<std::string>& list) : lines(list) {}

    /// Makes `line` the line at `index`, a view of it.
    /// @return false when there is none.
    bool read(std::size_t index, std::string_view& line) const {
        if (index >= lines.size()) return false;
        line = lines[index];
        return true;
    }

    static LineShape shapeOf(std::string_view line) { return detail::shapeOf(line, line.size()); }

private:
    const std::vector<std::string>& lines;
};

}  // namespace kiv::detail
