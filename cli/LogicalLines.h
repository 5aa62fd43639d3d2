#pragma once

#include <kiv/MiniKDXParser.h>

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "Diagnostics.h"

namespace kdx {

/// A physical line's share of a logical line.
struct Piece {
    std::size_t begin = 0;      ///< in the logical line
    std::size_t skipped = 0;    ///< bytes of the physical line in front of the share
    std::size_t line = 0;       ///< counted from 1
    std::string_view lineText;  ///< the whole physical line, without line feed
};

/// Cuts a text into logical lines as the library's parser does, and remembers where each of their
/// bytes comes from, which the parser does not tell. The text must outlive it.
class LogicalLines {
public:
    explicit LogicalLines(std::string_view text) : rest(text) {}
    ~LogicalLines() = default;
    LogicalLines(const LogicalLines&) = delete;
    LogicalLines& operator=(const LogicalLines&) = delete;

    /// Goes on to the next logical line. @return false when there is none.
    bool next();

    /// The logical line, until next() is called again.
    std::string_view text() const { return line; }
    const std::vector<Piece>& pieces() const { return linePieces; }

    /// The text behind the logical line.
    std::string_view textBehind() const { return rest; }

    /// What the library takes the logical line for.
    kiv::MiniKDXParser::lineType classify();
    /// The same, and the line's two halves.
    kiv::MiniKDXParser::lineType classify(std::string& first, std::string& second);

    /// The piece that the byte at `offset` of text() belongs to, or ends.
    const Piece& pieceAt(std::size_t offset) const;

    /// Where the byte at `offset` of text() stands. `offset` may be the end.
    Place placeOf(std::size_t offset) const;

private:
    const std::string& asString();
    bool takePhysical(std::string_view& physical);
    bool append(std::string_view physical, std::string_view share);
    void join(std::string_view physical);

    std::string_view rest;
    std::size_t lineCount = 0;
    std::string_view line;  // in the text, or in `copy` when it was joined
    std::string copy;
    std::vector<Piece> linePieces;
};

/// Where the comment of a logical line begins, at its '#'; npos when it has none.
std::size_t findComment(std::string_view logicalLine);

}  // namespace kdx
