#include "Diagnostics.h"

#include "JsonText.h"

namespace kdx {
namespace {

constexpr std::size_t kShownLength = 80;
constexpr std::size_t kLineLength = 160;  // of a line under its message
constexpr std::size_t kLineLead = 80;     // of that, in front of the caret

constexpr const char* kBold = "\033[1m";
constexpr const char* kGreen = "\033[1;32m";
constexpr const char* kPlain = "\033[0m";

const char* nameOf(Severity severity) {
    switch (severity) {
        case Severity::error: return "error";
        case Severity::warning: return "warning";
        case Severity::note: return "note";
    }
    return "";
}

const char* colorOf(Severity severity) {
    switch (severity) {
        case Severity::error: return "\033[1;31m";
        case Severity::warning: return "\033[1;35m";
        case Severity::note: return "\033[1;36m";
    }
    return "";
}

bool isControl(char c) {
    return static_cast<unsigned char>(c) < ' ' || c == '\x7f';
}

bool continuesCharacter(char c) {
    return (static_cast<unsigned char>(c) & 0xC0U) == 0x80U;
}

/// The line with every control character made one visible column wide.
std::string printable(std::string_view text) {
    std::string result;
    for (const char c : text) result += c == '\t' ? ' ' : isControl(c) ? '?' : c;
    return result;
}

/// Moves a cut off the middle of a UTF-8 character.
std::size_t characterBegin(std::string_view text, std::size_t offset) {
    while (offset > 0 && offset < text.size() && continuesCharacter(text[offset])) --offset;
    return offset;
}

std::string_view withoutReturn(std::string_view line) {
    return line.substr(0, line.size() - (!line.empty() && line.back() == '\r' ? 1 : 0));
}

void appendLineAndCaret(std::string& out, const Place& place, bool color) {
    const std::string_view line = withoutReturn(place.lineText);
    const std::size_t caret = place.column - 1;
    const std::size_t begin = characterBegin(line, caret > kLineLength ? caret - kLineLead : 0);
    const std::size_t end = characterBegin(line, begin + kLineLength);
    const std::string_view window = line.substr(begin, end - begin);
    out.append(printable(window)).append(1, '\n');
    for (const char c : window.substr(0, caret - begin))
        if (!continuesCharacter(c)) out += ' ';
    out.append(color ? kGreen : "").append(1, '^').append(color ? kPlain : "").append(1, '\n');
}

void appendForPeople(std::string& out, std::string_view file, const Problem& problem, bool color) {
    const Place& place = problem.place;
    out.append(color ? kBold : "").append(printable(file)).append(1, ':');
    if (place.line > 0)
        out.append(std::to_string(place.line) + ':' + std::to_string(place.column) + ':');
    out.append(1, ' ').append(color ? colorOf(problem.severity) : "");
    out.append(nameOf(problem.severity)).append(1, ':').append(color ? kPlain : "");
    out.append(1, ' ').append(problem.text);
    if (place.line > 0) out.append(" [").append(problem.rule).append(1, ']');
    out.append(1, '\n');
    if (place.line > 0) appendLineAndCaret(out, place, color);
}

void appendForPrograms(std::string& out, std::string_view file, const Problem& problem) {
    JsonMembers members{{"file", file}};
    if (problem.place.line > 0) {
        members.emplace_back("line", problem.place.line);
        members.emplace_back("column", problem.place.column);
    }
    members.emplace_back("severity", nameOf(problem.severity));
    members.emplace_back("rule", problem.rule);
    members.emplace_back("message", problem.text);
    out += shownJsonText(members);
    out += '\n';
}

}  // namespace

Place placeIn(std::string_view text, const kiv::KDXPlace& place) {
    const std::size_t begin = place.offset - (place.column - 1);
    return {place.line, place.column, text.substr(begin, text.find('\n', begin) - begin)};
}

void appendProblem(std::string& out, std::string_view file, const Problem& problem,
                   const Settings& settings) {
    if (settings.json) return appendForPrograms(out, file, problem);
    appendForPeople(out, file, problem, settings.errorColor);
}

void appendTrouble(std::string& out, std::string_view file, std::string_view text,
                   const Settings& settings) {
    appendProblem(out, file, {Severity::error, "trouble", {}, std::string(text)}, settings);
}

std::string shown(std::string_view text) {
    if (text.size() <= kShownLength) return printable(text);
    return printable(text.substr(0, characterBegin(text, kShownLength - 3))) + "...";
}

std::string shownName(std::string_view name) {
    return name.empty() ? "\"\"" : shown(name);
}

std::string describedByte(char c) {
    if (c == '\t') return "a tab";
    if (c >= ' ' && c <= '~') return {'\'', c, '\''};
    constexpr const char* kDigits = "0123456789ABCDEF";
    const auto byte = static_cast<unsigned char>(c);
    return std::string("the byte 0x") + kDigits[byte / 16] + kDigits[byte % 16];
}

std::string counted(std::size_t count, std::string_view noun) {
    return std::to_string(count).append(1, ' ').append(noun).append(count == 1 ? "" : "s");
}

}  // namespace kdx
