#pragma once

#include <algorithm>
#include <cstddef>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "parser/LineShape.h"

namespace kiv::detail {

/// The physical lines of a text, ended by line feeds. A line feed at the very end starts no further
/// line. To be classified, a last line without a line feed must be the end of a std::string.
class TextLines {
public:
    explicit TextLines(std::string_view text) : rest(text) {}

    /// Makes `line` the next line, a view of the text.
    /// @return false when there is none.
    bool next(std::string_view& line) {
        if (rest.empty()) return false;
        line = rest.substr(0, findLineFeed(rest));
        rest.remove_prefix(std::min(line.size() + 1, rest.size()));
        return true;
    }

    /// How many bytes may be read from the beginning of the line read last.
    std::size_t readable(std::string_view line) const {
        return static_cast<std::size_t>(rest.data() + rest.size() - line.data());
    }

    /// The same; the lines must be asked for in their order.
    bool read(std::size_t /*index*/, std::string_view& line) { return next(line); }

    /// How many bytes stand behind the line read last.
    std::size_t unread() const { return rest.size(); }

private:
    std::string_view rest;
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
        lines = TextLines(copy);
        return lines.next(line);
    }

    std::size_t readable(std::string_view line) const { return lines.readable(line); }
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

    static std::size_t readable(std::string_view line) { return line.size(); }

private:
    const std::vector<std::string>& lines;
};

}  // namespace kiv::detail
