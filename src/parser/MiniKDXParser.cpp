#include <kiv/Error.h>
#include <kiv/Messages.h>
#include <kiv/MiniKDXParser.h>

#include "external/Blank.h"
#include "parser/LineClassification.h"
#include "parser/LogicalLine.h"
#include "parser/PhysicalLines.h"

namespace kiv {
namespace {

constexpr const char* kUnknownSyntax = "Unknown KDX syntax found:\n%1.";
constexpr std::size_t kShownLength = 80;

std::string shownText(std::string_view text) {
    if (text.size() <= kShownLength) return std::string(text);
    return std::string(text.substr(0, kShownLength - 3)) + "...";
}

[[noreturn]] void throwUnknownSyntax(std::string_view line) {
    const std::string message = UserMsg(kUnknownSyntax, nullptr).arg(shownText(line));
    throw data::invalid("MiniKDXParser", "parse", message, errorTypeFailure);
}

/// The first physical line of a logical line. A backslash that only blanks follow is made its last
/// byte, so that the line is continued, provided that a backslash and a space stand side by side
/// somewhere in it: a backslash and a carriage return alone continue nothing.
std::string_view firstPhysicalLine(std::string_view line) {
    if (line.empty() || (line.back() != '\\' && !detail::isBlank(line.back()))) return line;
    const std::string_view trimmed = detail::withoutTrailingBlanks(line);
    if (!detail::isContinued(trimmed)) return line;
    if (line.find("\\ ") == std::string_view::npos) return line;
    return detail::withoutLeadingBlanks(trimmed);
}

}  // namespace

/// The texts that the callbacks receive, in storage that serves line after line. Each walk has its
/// own, so that a callback may start another one.
struct MiniKDXParser::WorkingText {
    std::string first;
    std::string second;
};

MiniKDXParser::MiniKDXParser() = default;
MiniKDXParser::MiniKDXParser(const std::vector<std::string>& lines) : commands(lines) {}
MiniKDXParser::MiniKDXParser(const MiniKDXParser&) = default;
MiniKDXParser& MiniKDXParser::operator=(const MiniKDXParser&) = default;
MiniKDXParser::~MiniKDXParser() = default;

void MiniKDXParser::setCommands(const std::vector<std::string>& lines) {
    commands = lines;
}
std::vector<std::string>& MiniKDXParser::getCommands() {
    return commands;
}
const std::vector<std::string>& MiniKDXParser::getCommands() const {
    return commands;
}
std::size_t MiniKDXParser::getLineNumber() const {
    return lineNumber;
}

void MiniKDXParser::newObject(const std::string& /*type*/, const std::string& /*name*/) {}
void MiniKDXParser::newParameter(const std::string& /*name*/, const std::string& /*value*/) {}
void MiniKDXParser::endObject() {}
void MiniKDXParser::newAction(const std::string& /*action*/) {}

void MiniKDXParser::parse() {
    parseLines(commands);
}

void MiniKDXParser::parseText(std::string_view text) {
    walk(detail::TextLines(text));
}

void MiniKDXParser::parseLines(const std::vector<std::string>& lines) {
    walk(detail::ListedLines(lines));
}

template <typename Lines>
void MiniKDXParser::walk(Lines lines) {
    objectStack.clear();
    detail::LogicalLine logicalLine;
    WorkingText working;
    const auto next = [this, &lines](std::string_view& line) {
        if (!lines.read(lineNumber + 1, line)) return false;
        ++lineNumber;
        return true;
    };
    std::string_view line;
    for (lineNumber = 0; lines.read(lineNumber, line); ++lineNumber)
        report(logicalLine.join(firstPhysicalLine(line), next), working);
}

void MiniKDXParser::report(std::string_view line, WorkingText& working) {
    switch (detail::splitLine(line, working.first, working.second)) {
        case lineUnrecognised: throwUnknownSyntax(line);
        case lineVerbatim:
        case lineBlank: return;
        case lineObject:
            newObject(working.first, working.second);
            objectStack.emplace_back(working.first, working.second);
            return;
        case lineParameter: newParameter(working.first, working.second); return;
        case lineEnd:
            endObject();
            if (!objectStack.empty()) objectStack.pop_back();
            return;
        case lineAction:
            working.first.assign(line);
            newAction(working.first);
            return;
    }
}

}  // namespace kiv
