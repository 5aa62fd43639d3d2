#include "LogicalLines.h"

#include <algorithm>

#include "Blank.h"

// A physical line is continued by the next one when it ends in a backslash. On the first physical
// line of a logical line, blanks may follow that backslash if one of the backslashes in the line
// has a space right behind it.

namespace kdx {
namespace {

bool isContinued(std::string_view line) {
    return !line.empty() && line.back() == '\\';
}

std::string_view shareOfFirst(std::string_view line) {
    const std::string_view trimmed = withoutTrailingBlanks(line);
    if (!isContinued(trimmed)) return line;
    if (line.find("\\ ") == std::string_view::npos) return line;
    return withoutLeadingBlanks(trimmed);
}

}  // namespace

bool LogicalLines::takePhysical(std::string_view& physical) {
    if (rest.empty()) return false;
    physical = rest.substr(0, rest.find('\n'));
    rest.remove_prefix(std::min(physical.size() + 1, rest.size()));
    ++lineCount;
    return true;
}

bool LogicalLines::next() {
    if (!takePhysical(line)) return false;
    linePieces.clear();
    if (line.find('\\') == std::string_view::npos)
        linePieces.push_back({0, 0, lineCount, line});
    else
        join(line);
    return true;
}

void LogicalLines::join(std::string_view physical) {
    copy.clear();
    bool continued = append(physical, shareOfFirst(physical));
    while (continued && takePhysical(physical))
        continued = append(physical, withoutLeadingBlanks(physical));
    line = copy;
}

/// Appends the share without its final backslash. @return whether there was one.
bool LogicalLines::append(std::string_view physical, std::string_view share) {
    const auto skipped = static_cast<std::size_t>(share.data() - physical.data());
    linePieces.push_back({copy.size(), skipped, lineCount, physical});
    const bool continued = isContinued(share);
    copy.append(share.substr(0, share.size() - (continued ? 1 : 0)));
    return continued;
}

const std::string& LogicalLines::asString() {
    if (line.data() != copy.data()) copy.assign(line);
    return copy;
}

kiv::MiniKDXParser::lineType LogicalLines::classify() {
    return kiv::MiniKDXParser::determineLineType(asString());
}

kiv::MiniKDXParser::lineType LogicalLines::classify(std::string& first, std::string& second) {
    return kiv::MiniKDXParser::determineLineType(asString(), first, second);
}

const Piece& LogicalLines::pieceAt(std::size_t offset) const {
    const auto behind =
        std::upper_bound(linePieces.begin() + 1, linePieces.end(), offset,
                         [](std::size_t o, const Piece& piece) { return o < piece.begin; });
    return *(behind - 1);
}

Place LogicalLines::placeOf(std::size_t offset) const {
    const Piece& piece = pieceAt(offset);
    return {piece.line, offset - piece.begin + piece.skipped + 1, piece.lineText};
}

std::size_t findComment(std::string_view logicalLine) {
    const std::string_view text = withoutLeadingBlanks(logicalLine);
    if (!text.empty() && text.front() == '!') return std::string_view::npos;
    const std::size_t hash = logicalLine.find('#');
    if (hash == std::string_view::npos || hash == 0) return hash;
    return logicalLine[hash - 1] == '\\' ? std::string_view::npos : hash;
}

}  // namespace kdx
