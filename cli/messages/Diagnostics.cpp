#include "Diagnostics.h"

#include "text/JsonText.h"
#include "text/ShownText.h"

namespace kdx {
namespace {

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

std::string_view withoutReturn(std::string_view line) {
    return line.substr(0, line.size() - (!line.empty() && line.back() == '\r' ? 1 : 0));
}

void appendLineAndCaret(std::string& out, const Place& place, bool color) {
    const std::string_view line = withoutReturn(place.lineText);
    const std::size_t caret = place.column - 1;
    const std::size_t begin = characterBegin(line, caret > kLineLength ? caret - kLineLead : 0);
    const std::size_t end = characterBegin(line, begin + kLineLength);
    const std::string_view window = line.substr(begin, end - begin);
    out.append(kiv::visibleText(window)).append(1, '\n');
    for (const char c : window.substr(0, caret - begin))
        if (!continuesCharacter(c)) out += ' ';
    out.append(color ? kGreen : "").append(1, '^').append(color ? kPlain : "").append(1, '\n');
}

void appendForPeople(std::string& out, std::string_view file, const Problem& problem, bool color) {
    const Place& place = problem.place;
    out.append(color ? kBold : "").append(kiv::visibleText(file)).append(1, ':');
    if (place.line > 0)
        out.append(std::to_string(place.line) + ':' + std::to_string(place.column) + ':');
    out.append(1, ' ').append(color ? colorOf(problem.severity) : "");
    out.append(nameOf(problem.severity)).append(1, ':').append(color ? kPlain : "");
    out.append(1, ' ').append(problem.text);
    if (!problem.rule.empty() && place.line > 0)
        out.append(" [").append(problem.rule).append(1, ']');
    out.append(1, '\n');
    if (place.line > 0) appendLineAndCaret(out, place, color);
    if (problem.related)
        appendForPeople(out, file, {Severity::note, {}, *problem.related, "see here"}, color);
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
    if (problem.related) {
        members.emplace_back("relatedLine", problem.related->line);
        members.emplace_back("relatedColumn", problem.related->column);
    }
    out += shownJsonText(members);
    out += '\n';
}

/// Text as GitHub reads it back; `special` are the characters to escape.
std::string escaped(std::string_view text, std::string_view special) {
    std::string result;
    for (const char c : text) {
        const bool isSpecial = special.find(c) != std::string_view::npos;
        constexpr const char* kDigits = "0123456789ABCDEF";
        const auto byte = static_cast<unsigned char>(c);
        if (isSpecial) result.append(1, '%').append(1, kDigits[byte / 16]);
        result += isSpecial ? kDigits[byte % 16] : c;
    }
    return result;
}

void appendForGithub(std::string& out, std::string_view file, const Problem& problem) {
    constexpr const char* kInMessage = "%\r\n";
    constexpr const char* kInProperty = "%\r\n:,";
    const bool isNote = problem.severity == Severity::note;
    out.append("::").append(isNote ? "notice" : nameOf(problem.severity));
    out.append(" file=").append(escaped(file, kInProperty));
    if (problem.place.line > 0)
        out.append(",line=" + std::to_string(problem.place.line))
            .append(",col=" + std::to_string(problem.place.column));
    out.append(",title=").append(escaped(problem.rule, kInProperty));
    out.append("::").append(escaped(problem.text, kInMessage)).append(1, '\n');
}

Format formatOf(const Settings& settings) {
    return settings.json ? Format::json : Format::text;
}

}  // namespace

Place placeIn(std::string_view text, const kiv::KDXPlace& place) {
    const std::size_t begin = place.offset - (place.column - 1);
    return {place.line, place.column, text.substr(begin, text.find('\n', begin) - begin)};
}

MessageStyle errorStyle(const Settings& settings) {
    return {formatOf(settings), settings.errorColor};
}

MessageStyle outputStyle(const Settings& settings) {
    return {formatOf(settings), settings.outputColor};
}

void appendProblem(std::string& out, std::string_view file, const Problem& problem,
                   MessageStyle style) {
    switch (style.format) {
        case Format::text: return appendForPeople(out, file, problem, style.color);
        case Format::json: return appendForPrograms(out, file, problem);
        case Format::github: return appendForGithub(out, file, problem);
    }
}

void appendProblem(std::string& out, std::string_view file, const Problem& problem,
                   const Settings& settings) {
    appendProblem(out, file, problem, errorStyle(settings));
}

void appendTrouble(std::string& out, std::string_view file, std::string_view text,
                   const Settings& settings) {
    appendProblem(out, file, {Severity::error, "trouble", {}, std::string(text)}, settings);
}

}  // namespace kdx
