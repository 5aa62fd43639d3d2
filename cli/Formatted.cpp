#include "Formatted.h"

#include <kiv/KDXFormatting.h>
#include <kiv/MiniKDXParser.h>
#include <kiv/StringUtilities.h>

#include <algorithm>
#include <vector>

#include "Blank.h"
#include "Diagnostics.h"
#include "Meaning.h"

namespace kdx {
namespace {

using Lines = std::vector<std::string>;

bool hasReturn(const std::string& line) {
    return !line.empty() && line.back() == '\r';
}

/// Takes the carriage returns off the line ends, but for those that keep a backslash from
/// continuing its line.
void dropReturns(Lines& lines) {
    for (std::string& line : lines)
        if (hasReturn(line) && (line.size() == 1 || line[line.size() - 2] != '\\')) line.pop_back();
}

std::string joined(const Lines& lines, bool withReturns) {
    std::size_t size = 0;
    for (const std::string& line : lines) size += line.size() + 2;
    std::string text;
    text.reserve(size);
    for (const std::string& line : lines) {
        text += line;
        if (withReturns && !hasReturn(line)) text += '\r';
        text += '\n';
    }
    return text;
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

/// Finds an END that a continuation cuts in two, which the indentation does not take for one.
bool reportCutEnd(const Source& source, const Settings& settings, Outcome& outcome) {
    for (LogicalLines lines(source.text()); lines.next();) {
        if (lines.pieces().size() == 1) continue;
        if (kiv::MiniKDXParser::determineLineType(lines.text()) != kiv::MiniKDXParser::lineEnd)
            continue;
        appendProblem(outcome.diagnostics, source.name,
                      {Severity::error, "cut-end", lines.placeOf(0),
                       "END is continued by another line, which cannot be laid out: join them"},
                      settings);
        outcome.raise(Status::trouble);
        return true;
    }
    return false;
}

}  // namespace

bool formatSource(const Source& source, const Settings& settings, std::string& formatted,
                  Outcome& outcome) {
    if (reportCutEnd(source, settings, outcome)) return false;
    Lines lines = kiv::StringUtilities::stringToVector(std::string(source.text()), '\n');
    const bool withReturns = !lines.empty() && std::all_of(lines.begin(), lines.end(), hasReturn);
    dropReturns(lines);
    Lines indented = kiv::KDXFormatting::indentKDX(lines);
    if (indented.size() != lines.size()) {
        const std::size_t leftOut = findLeftOut(lines, indented);
        reportLeftOut(source, lines[leftOut], leftOut, settings, outcome);
        return false;
    }
    lines = Lines();
    formatted = joined(indented, withReturns);
    indented = Lines();
    if (!sameMeaning(source.text(), formatted))
        throw Trouble("would mean something else when it is formatted; it is left alone");
    return true;
}

}  // namespace kdx
