#include <kiv/Error.h>
#include <kiv/KDXFormatting.h>
#include <kiv/KDXReader.h>
#include <kiv/Messages.h>

#include <algorithm>

#include "base/ShownText.h"
#include "parser/LineClassification.h"
#include "parser/LogicalLine.h"
#include "parser/PhysicalLines.h"
#include "parser/ReadBack.h"
#include "tools/EndComments.h"
#include "tools/LineLayout.h"

// Nearly every statement is a line without a backslash. Such a line can be moved and spaced, and
// reads the same: neither can it be continued, nor can its '#' be escaped. It is classified and
// laid out without an allocation. Every other statement is composed, and read back before it is
// taken.
//
// Most lines of most texts stand as they should. Nothing is done about them until one comes that
// does not: all of them are then copied at once.

namespace kiv::KDXFormatting {
namespace {

using detail::LineLayout;
using lineType = MiniKDXParser::lineType;

constexpr const char* kUnknownSyntax =
    "Unknown KDX syntax in line %1, column %2, where ':' or '=' is awaited:\n%3.";
constexpr std::string_view kEnd = "END";

[[noreturn]] void throwUnknownSyntax(std::string_view text) {
    KDXReader reader(text);
    while (reader.next() && reader.kind() != MiniKDXParser::lineUnrecognised) continue;
    const KDXPlace place = reader.placeOf(KDXReader::Part::first, reader.first().size());
    UserMsg message(kUnknownSyntax, nullptr);
    message.arg(std::to_string(place.line))
        .arg(std::to_string(place.column))
        .arg(detail::shown(reader.text()));
    throw data::invalid("KDXFormatting", "formatKDX", message, errorTypeFailure);
}

/// What stays of a physical line: blanks behind a backslash do, because without them the line might
/// be continued.
std::string_view withoutLooseBlanks(std::string_view line) {
    const std::string_view stripped = detail::withoutLeadingBlanks(line);
    const std::string_view trimmed = detail::withoutTrailingBlanks(stripped);
    return detail::isContinued(trimmed) ? stripped : trimmed;
}

/// Lays out a text statement by statement.
class Formatter {
public:
    Formatter(std::string_view wholeText, const Style& givenStyle)
        : text(wholeText),
          style(givenStyle),
          divider(style.separators),
          endComments(style.endComments),
          begin(KDXReader(text).placeInSource(0).offset),
          lines(text.substr(begin)),
          blankLines(style.blankLines),  // none are wanted at the beginning
          sizeWithoutBlanks(begin) {
        formatted.reserve(text.size() + text.size() / 16);
    }

    std::string run() {
        findBackslash();
        for (std::string_view line; readLine(line); begin = end) {
            if (end > backslash)
                addGuarded(line);
            else
                addPlain(line);
        }
        copyKept();
        if (blankLines != 0) formatted.resize(sizeWithoutBlanks);
        return std::move(formatted);
    }

private:
    bool readLine(std::string_view& line) {
        const bool found = lines.read(0, line);
        end = text.size() - lines.unread();
        return found;
    }

    /// The bytes of the statement.
    std::string_view source() const { return text.substr(begin, end - begin); }

    /// How the statement is to end: as it does; one that lacks a line end, as the line before.
    std::string_view lineEnd() const {
        const std::size_t behindFeed = text[end - 1] == '\n' ? end : begin;
        return behindFeed > 1 && text[behindFeed - 2] == '\r' ? "\r\n" : "\n";
    }

    /// Copies what is kept in front of the statement.
    void copyKept() { formatted.append(text, copied, begin - copied); }

    /// Begins to replace the statement; what is appended to the formatted text comes in its place.
    void replaceSource() {
        copyKept();
        copied = end;
    }

    void findBackslash() { backslash = text.find('\\', end); }

    // ---- Lines without a backslash ----

    void addPlain(std::string_view line) {
        const char* const bytes = line.data();  // unlike line[], may reach the byte behind the end
        const detail::LineShape shape = lines.shapeOf(line);
        spaces = shape.spaces;
        std::size_t nameBegin = spaces;
        while (nameBegin < line.size() && detail::isBlank(bytes[nameBegin])) ++nameBegin;
        const std::size_t nameEnd =
            nameBegin == spaces ? shape.nameEnd : detail::nameEndOf(line, nameBegin);
        const char stop = bytes[nameEnd];
        const std::string_view stripped =
            detail::withoutTrailingBlanks({bytes + nameBegin, line.size() - nameBegin});
        if (stop != '=' && stop != ':') return addUndivided(stripped, nameEnd - nameBegin);
        place(divider.divide(stripped, nameEnd - nameBegin));
        if (stop == ':') openObject(line);
    }

    void addUndivided(std::string_view line, std::size_t nameLength) {
        if (line.empty()) return addBlank();
        const lineType kind = detail::classifyOther(line, std::min(nameLength, line.size()));
        if (kind == MiniKDXParser::lineEnd) return addEnd(line);
        if (kind == MiniKDXParser::lineUnrecognised) throwUnknownSyntax(text);
        place(detail::unchanged(line));
    }

    void addEnd(std::string_view line) {
        leaveObject();
        if (!endComments.mayChange()) return place(detail::unchanged(line));
        const std::string_view comment = detail::withoutLeadingBlanks(line.substr(kEnd.size()));
        const std::string_view wanted = endComments.close(comment);
        if (wanted.data() == comment.data()) return place(detail::unchanged(line));
        place({kEnd, wanted.empty() ? "" : " ", wanted});
    }

    void openObject(std::string_view line) {
        ++depth;
        findIndentation();
        if (!endComments.mayChange()) return;
        const detail::LineParts parts = splitter.split(line, detail::shapeOf(line, line.size()));
        endComments.open(parts.first, parts.second);
    }

    void leaveObject() {
        depth -= depth == 0 ? 0 : 1;
        findIndentation();
    }

    void findIndentation() {
        indentation = std::min(depth, style.deepestLevel) * style.indentWidth;
    }

    void addBlank() {
        if (blankLines == style.blankLines) return replaceSource();
        if (blankLines == 0) sizeWithoutBlanks = formatted.size() + begin - copied;
        ++blankLines;
        const std::string_view wanted = lineEnd();
        if (source() == wanted) return;
        replaceSource();
        formatted.append(wanted);
    }

    void place(const LineLayout& layout) {
        blankLines = 0;
        if (stands(layout)) return;
        replaceSource();
        formatted.append(indentation, ' ');
        layout.appendTo(formatted);
        formatted.append(lineEndOf(layout.rest));
    }

    /// Whether the line stands as it should.
    bool stands(const LineLayout& layout) const {
        if (layout.rest.data() != text.data() + begin + indentation || spaces != indentation)
            return false;
        const std::size_t restEnd = begin + indentation + layout.rest.size();
        return restEnd + 1 == end ? text[restEnd] == '\n'
                                  : text.substr(restEnd, end - restEnd) == "\r\n";
    }

    // ---- Statements with a backslash, continued ones among them ----

    void addGuarded(std::string_view line) {
        spaces = detail::leadingSpaces(line);
        const std::string_view logicalLine =
            joiner.join(detail::firstPhysicalLine(line),
                        [this](std::string_view& next) { return readLine(next); });
        const bool continued = logicalLine.data() != line.data();
        const lineType kind = detail::classifyText(detail::withoutLeadingBlanks(logicalLine));
        findBackslash();
        if (kind == MiniKDXParser::lineUnrecognised) throwUnknownSyntax(text);
        // Nothing is put between an END and the backslash in its comment.
        if (kind == MiniKDXParser::lineEnd && !continued) return addEnd(withoutLooseBlanks(line));
        if (kind == MiniKDXParser::lineEnd) leaveContinuedEnd();
        compose(kind);
        if (composed != source() && readsTheSame()) {
            replaceSource();
            formatted.append(composed);
        }
        blankLines = 0;
        if (kind == MiniKDXParser::lineObject) openObject(logicalLine);
    }

    void leaveContinuedEnd() {
        leaveObject();
        if (endComments.mayChange()) endComments.close({});
    }

    void compose(lineType kind) {
        composed.clear();
        detail::TextLines physicalLines(source());
        std::string_view line;
        physicalLines.next(line);
        line = withoutLooseBlanks(line);
        composed.append(indentation, ' ');
        layoutOfFirst(line, kind).appendTo(composed);
        composed.append(lineEndOf(line));
        while (physicalLines.next(line)) {
            line = withoutLooseBlanks(line);
            if (!line.empty()) composed.append(indentation + style.indentWidth, ' ');
            composed.append(line).append(lineEndOf(line));
        }
    }

    LineLayout layoutOfFirst(std::string_view line, lineType kind) const {
        const bool hasHalves =
            kind == MiniKDXParser::lineObject || kind == MiniKDXParser::lineParameter;
        // It may also stand in a line behind this one.
        const std::size_t separator = hasHalves ? line.find_first_of(":=") : std::string_view::npos;
        if (separator == std::string_view::npos) return detail::unchanged(line);
        return divider.divide(line, separator);
    }

    /// The line end of a physical line. Blanks behind a backslash are all that stood in front of
    /// the line feed.
    std::string_view lineEndOf(std::string_view line) const {
        return detail::isContinued(detail::withoutTrailingBlanks(line)) ? "\n" : lineEnd();
    }

    bool readsTheSame() const {
        KDXReader statement(source());
        statement.next();
        return detail::readsBackAs(composed, detail::meaningOf(statement));
    }

    std::string_view text;
    const Style& style;
    detail::LineDivider divider;
    detail::EndComments endComments;
    std::size_t begin;    // of the statement, in the text
    std::size_t end = 0;  // of what was read of it
    detail::BorrowedTextLines lines;
    detail::LogicalLine joiner;
    std::string composed;
    detail::LineSplitter splitter;
    std::string formatted;
    std::size_t copied = 0;     // up to here, the text was copied or replaced
    std::size_t backslash = 0;  // the position of the next one
    std::size_t spaces = 0;     // in front of the statement
    std::size_t depth = 0;
    std::size_t indentation = 0;    // at this depth
    std::size_t blankLines;         // at the end of what was formatted
    std::size_t sizeWithoutBlanks;  // of what was formatted
};

}  // namespace

std::string formatKDX(std::string_view text, const Style& style) {
    return Formatter(text, style).run();
}

}  // namespace kiv::KDXFormatting
