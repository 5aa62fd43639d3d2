#pragma once

#include <algorithm>
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "parser/LineShape.h"

namespace kiv::detail {

/// The physical lines of a text, ended by line feeds. A line feed at the very end starts no further
/// line.
class TextLines {
public:
    explicit TextLines(const std::string& text) : rest(text) {}

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

private:
    std::string_view rest;
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
