#include "Formatted.h"

#include <kiv/KDXFormatting.h>
#include <kiv/StringUtilities.h>

#include <algorithm>
#include <optional>
#include <vector>

#include "Blank.h"
#include "Diagnostics.h"
#include "LogicalLines.h"
#include "Meaning.h"

namespace kdx {
namespace {

using Lines = std::vector<std::string>;

bool hasReturn(const std::string& line) {
    return !line.empty() && line.back() == '\r';
}

bool allHaveReturns(std::string_view text) {
    std::size_t begin = 0;
    while (begin < text.size()) {
        const std::size_t end = std::min(text.find('\n', begin), text.size());
        if (end == begin || text[end - 1] != '\r') return false;
        begin = end + 1;
    }
    return !text.empty();
}

/// Takes the carriage returns off the line ends, but for those that keep a backslash from
/// continuing its line.
void dropReturns(Lines& lines) {
    for (std::string& line : lines)
        while (hasReturn(line) && (line.size() == 1 || line[line.size() - 2] != '\\'))
            line.pop_back();
}

void appendLines(std::string& out, const Lines& lines, bool withReturns) {
    for (const std::string& line : lines) {
        out += line;
        if (withReturns && !hasReturn(line)) out += '\r';
        out += '\n';
    }
}

/// The index of the first line that has no counterpart in the shorter list.
std::size_t findLeftOut(const Lines& lines, const Lines& indented) {
    std::size_t i = 0;
    while (i < indented.size() &&
           withoutLeadingBlanks(lines[i]) == withoutLeadingBlanks(indented[i]))
        ++i;
    return i;
}

void reportLeftOut(const Source& source, const std::string& line, std::size_t index,
                   const Settings& settings, Outcome& outcome) {
    const std::size_t column = line.size() - withoutLeadingBlanks(line).size() + 1;
    appendProblem(outcome.diagnostics, source.name,
                  {Severity::error,
                   "left-out",
                   {index + 1, column, line},
                   "this line would be left out: it is empty or begins with a backslash where a "
                   "name is awaited; join it with its neighbours"},
                  settings);
    outcome.raise(Status::trouble);
}

/// The first line that a comment swallows and that the indentation may take for an object; the end
/// of the pieces when there is none.
const Piece* findSwallowedObject(const LogicalLines& lines, const Piece* end) {
    const std::size_t comment = findComment(lines.text());
    if (comment == std::string_view::npos) return end;
    return std::find_if(&lines.pieceAt(comment) + 1, end, [](const Piece& piece) {
        std::string text(piece.lineText);
        if (!text.empty() && text.back() == '\\') text.pop_back();
        const auto type = kiv::MiniKDXParser::determineLineType(text);
        return type == kiv::MiniKDXParser::lineObject ||
               type == kiv::MiniKDXParser::lineUnrecognised;
    });
}

/// Finds a line that the indentation takes for something else than the parser does, so that the
/// depth of what it indents would have no limit.
std::optional<Problem> findMistakable(const Source& source) {
    for (LogicalLines lines(source.text()); lines.next();) {
        if (lines.pieces().size() == 1) continue;
        const auto type = lines.classify();
        if (type == kiv::MiniKDXParser::lineVerbatim) continue;
        if (type == kiv::MiniKDXParser::lineEnd)
            return Problem{Severity::error, "cut-end", lines.placeOf(0),
                           "END is continued by another line, which cannot be laid out: join them"};
        const Piece* const end = lines.pieces().data() + lines.pieces().size();
        const Piece* const swallowed = findSwallowedObject(lines, end);
        if (swallowed != end)
            return Problem{Severity::error,
                           "swallowed-object",
                           {swallowed->line, 1, swallowed->lineText},
                           "this line continues a comment, which cannot be laid out: end the "
                           "comment without a backslash"};
    }
    return std::nullopt;
}

/// Lays out a text part by part, each of which begins outside of all objects: what is at work
/// stays in the processor's cache, and takes little memory.
class Formatter {
public:
    Formatter(const CheckedSource& givenSource, const Settings& givenSettings,
              std::string& formattedText, Outcome& givenOutcome)
        : source(givenSource),
          settings(givenSettings),
          formatted(formattedText),
          outcome(givenOutcome),
          withReturns(allHaveReturns(source.text())) {}

    bool run() {
        formatted.reserve(source.text().size() + source.text().size() / 4);
        std::size_t begin = 0;
        for (const std::size_t seam : source.seams) {
            if (!formatPart(source.text().substr(begin, seam - begin))) return false;
            begin = seam;
        }
        return formatPart(source.text().substr(begin));
    }

private:
    bool formatPart(std::string_view part) {
        Lines lines = kiv::StringUtilities::stringToVector(std::string(part), '\n');
        dropReturns(lines);
        const Lines indented = kiv::KDXFormatting::indentKDX(lines);
        if (indented.size() != lines.size()) {
            const std::size_t leftOut = findLeftOut(lines, indented);
            reportLeftOut(source, lines[leftOut], linesBefore + leftOut, settings, outcome);
            return false;
        }
        linesBefore += lines.size();
        const std::size_t before = formatted.size();
        appendLines(formatted, indented, withReturns);
        if (!sameMeaning(part, std::string_view(formatted).substr(before)))
            throw Trouble("would mean something else when it is formatted; it is left alone");
        return true;
    }

    const CheckedSource& source;
    const Settings& settings;
    std::string& formatted;
    Outcome& outcome;
    bool withReturns;
    std::size_t linesBefore = 0;
};

}  // namespace

bool formatSource(const CheckedSource& source, const Settings& settings, std::string& formatted,
                  Outcome& outcome) {
    if (const std::optional<Problem> problem = findMistakable(source)) {
        appendProblem(outcome.diagnostics, source.name, *problem, settings);
        outcome.raise(Status::trouble);
        return false;
    }
    return Formatter(source, settings, formatted, outcome).run();
}

}  // namespace kdx
