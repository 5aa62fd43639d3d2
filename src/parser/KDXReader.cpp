#include <kiv/Error.h>
#include <kiv/KDXReader.h>

#include <algorithm>

#include "base/Blank.h"
#include "base/ByteOrderMark.h"
#include "base/LineEnd.h"
#include "base/Whitespace.h"
#include "parser/LineTrimming.h"
#include "parser/PhysicalLines.h"
#include "parser/Walk.h"

namespace kiv {
namespace {

std::size_t indentationOf(std::string_view line) {
    return line.size() - detail::withoutLeadingBlanks(line).size();
}

/// The position, in a logical line, of the ':' or '=' that ends its first half.
std::size_t separatorIn(std::string_view line) {
    return std::min(line.find_first_of(":="), line.size());
}

/// Where byte `offset` of the logical line of a statement stands in the statement's source.
std::size_t sourceOffsetOf(std::string_view source, std::size_t offset) {
    detail::TextLines lines(source);
    std::string_view line;
    lines.next(line);
    std::size_t found = offset;
    detail::LogicalLine().join(
        detail::firstPhysicalLine(line), [&](std::string_view& next) { return lines.next(next); },
        [&](std::size_t begin, std::string_view share) {
            if (begin <= offset)
                found = static_cast<std::size_t>(share.data() - source.data()) + offset - begin;
        });
    return found;
}

/// Where the comment of a statement begins in its line, the end of the line when it has none.
template <typename Statement>
std::size_t commentBegin(const Statement& statement) {
    return statement.kind == MiniKDXParser::lineVerbatim
               ? detail::findComment(statement.line, statement.hash)
               : detail::commentBegin(statement.line, statement.hash);
}

void refuse(const char* function) {
    throw internal::error("KDXReader", function, "There is no byte at this position.",
                          errorTypeFailure);
}

}  // namespace

struct KDXReader::State {
    explicit State(std::string_view wholeText, std::size_t limit)
        : text(wholeText), lines(text.substr(detail::byteOrderMarkLength(text))), maxDepth(limit) {}

    /// The end of what was read of the text.
    const char* behindRead() const { return text.data() + text.size() - lines.unread(); }

    std::string_view text;
    detail::BorrowedTextLines lines;
    detail::LogicalLineReader logicalLines;
    std::size_t openObjects = 0;
    std::size_t maxDepth;
};

KDXReader::KDXReader(std::string_view text, std::size_t maxDepth)
    : state(std::make_unique<State>(text, maxDepth)) {
    current.source = text.substr(text.size() - state->lines.unread(), 0);
}
KDXReader::KDXReader(KDXReader&&) noexcept = default;
KDXReader& KDXReader::operator=(KDXReader&&) noexcept = default;
KDXReader::~KDXReader() = default;

bool KDXReader::next() {
    if (tooDeep) return false;
    const char* const begin = current.source.data() + current.source.size();
    firstLine = nextLine;
    std::size_t lastLine = nextLine;
    std::string_view line;
    detail::LineParts parts{};
    if (!state->logicalLines.read(state->lines, lastLine, line, parts)) {
        if (firstLine > 0 && state->text.back() != '\n') --firstLine;  // where the text ends
        const std::string_view nothing = current.source.substr(current.source.size());
        current = {};
        current.source = nothing;
        return false;
    }
    nextLine = lastLine + 1;
    current.kind = parts.kind;
    current.first = parts.first;
    current.second = parts.second;
    current.line = line;
    current.hash = parts.hash;
    current.source = {begin, static_cast<std::size_t>(state->behindRead() - begin)};
    if (parts.kind == MiniKDXParser::lineEnd && state->openObjects > 0) --state->openObjects;
    current.depth = state->openObjects;
    if (parts.kind != MiniKDXParser::lineObject) return true;
    tooDeep = state->openObjects++ >= state->maxDepth;
    return !tooDeep;
}

std::string_view KDXReader::comment() const noexcept {
    return detail::withoutTrailingBlanks(current.line.substr(commentBegin(current)));
}

std::string_view KDXReader::text() const noexcept {
    return detail::withoutOuterBlanks(current.line.substr(0, commentBegin(current)));
}

std::string_view KDXReader::lineEnd() const noexcept {
    return detail::lineEndOf(current.source);
}

bool KDXReader::hasByteOrderMark() const noexcept {
    return detail::startsWithByteOrderMark(state->text);
}

std::string_view KDXReader::part(Part which) const noexcept {
    if (which == Part::line) return current.line;
    if (which == Part::text) return text();
    if (which == Part::first) return current.first;
    if (which == Part::second) return current.second;
    return comment();
}

/// Finds the bytes of a statement's parts in its logical line.
class KDXReader::Places {
public:
    explicit Places(const KDXReader& givenReader)
        : reader(givenReader), statement(givenReader.current) {}

    std::size_t offsetOf(Part part, std::size_t byte) const {
        if (part == Part::line) return byte;
        if (part == Part::text) return indentationOf(statement.line) + byte;
        if (part == Part::first) return offsetInFirst(byte);
        if (part == Part::second) return offsetInSecond(byte);
        return commentBegin(statement) + byte;
    }

private:
    std::size_t offsetInFirst(std::size_t byte) const {
        const std::size_t begin = indentationOf(statement.line);
        return statement.kind == MiniKDXParser::lineUnrecognised ? begin + byte
                                                                 : beforeSimplifying(begin, byte);
    }

    std::size_t offsetInSecond(std::size_t byte) const {
        const bool isDivided = statement.kind == MiniKDXParser::lineObject ||
                               statement.kind == MiniKDXParser::lineParameter;
        if (!isDivided) return offsetOf(Part::text, reader.text().size());
        const std::size_t separator = separatorIn(statement.line);
        const std::size_t begin = separator + 1;
        if (statement.second.empty()) return begin;
        const std::size_t half = begin + indentationOf(statement.line.substr(begin));
        // A value keeps its inner blanks.
        return statement.kind == MiniKDXParser::lineParameter ? half + byte
                                                              : beforeSimplifying(half, byte);
    }

    /// The position of a byte of a half that begins at `begin` and was simplified.
    std::size_t beforeSimplifying(std::size_t begin, std::size_t byte) const {
        return begin + detail::offsetBeforeSimplifying(statement.line.substr(begin), byte);
    }

    const KDXReader& reader;
    const Statement& statement;
};

KDXPlace KDXReader::place() const {
    return placeOf(Part::text);
}

KDXPlace KDXReader::placeOf(Part which, std::size_t byte) const {
    const Places places(*this);
    const std::size_t size = part(which).size();
    if (byte > size) refuse("placeOf");
    // Behind the last byte of a part, or in front of one that is empty, lines may have been joined:
    // what counts is the byte before.
    const std::size_t offset = places.offsetOf(which, byte);
    const bool inside = byte < size || offset == 0;
    return placeInSource(inside ? sourceOffsetOf(current.source, offset)
                                : sourceOffsetOf(current.source, offset - 1) + 1);
}

KDXPlace KDXReader::placeInSource(std::size_t byte) const {
    const std::string_view source = current.source;
    if (byte > source.size()) refuse("placeInSource");
    const auto feeds = std::count(source.begin(), source.begin() + byte, '\n');
    const std::string_view text = state->text;
    const std::size_t offset = static_cast<std::size_t>(source.data() - text.data()) + byte;
    const std::size_t lineBegin =
        std::max(text.substr(0, offset).rfind('\n') + 1, detail::byteOrderMarkLength(text));
    return {offset, firstLine + static_cast<std::size_t>(feeds) + 1, offset - lineBegin + 1};
}

}  // namespace kiv
