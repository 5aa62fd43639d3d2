#include "parser/ReadBack.h"

#include "base/LineEnd.h"
#include "parser/LineTrimming.h"
#include "parser/LogicalLine.h"

namespace kiv::detail {
namespace {

constexpr std::string_view kStatementBehind = "behind = 1\n";

}  // namespace

Meaning meaningOf(const KDXReader& reader) {
    const bool hasHalves = reader.kind() != MiniKDXParser::lineAction &&
                           reader.kind() != MiniKDXParser::lineVerbatim &&
                           reader.kind() != MiniKDXParser::lineUnrecognised;
    return {reader.kind(), hasHalves ? reader.first() : reader.text(), reader.second(),
            reader.comment()};
}

bool isOpen(std::string_view lines) {
    if (!mayBeOpen(lines)) return false;
    const std::size_t end = lines.size() + (lineEndOf(lines).empty() ? 1 : 0);
    const std::string text = std::string(lines).append("\n\n").append(kStatementBehind);
    KDXReader reader(text);
    std::size_t read = 0;
    while (read < end && reader.next()) read = reader.placeInSource(reader.source().size()).offset;
    return read > end;
}

bool mayBeOpen(std::string_view lines) {
    return mayBeContinued(lineEndOf(lines).empty() ? lines : lines.substr(0, lines.size() - 1));
}

bool holdsComment(std::string_view text) {
    return commentBegin(text, text.find('#')) != text.size();
}

bool readsBackAs(std::string_view statement, const Meaning& meaning) {
    const std::string text = std::string(statement).append(kStatementBehind);
    KDXReader reader(text);
    if (!reader.next() || reader.source() != statement || !(meaningOf(reader) == meaning))
        return false;
    return reader.next() && reader.source() == kStatementBehind;
}

}  // namespace kiv::detail
