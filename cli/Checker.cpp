#include "Checker.h"

#include <kiv/MiniKDXParser.h>

#include <algorithm>

#include "Blank.h"
#include "FirstSeen.h"

namespace kdx {
namespace {

using kiv::MiniKDXParser;

constexpr const char* kNameCharacters = "letters, digits, blanks, '&', '.' and '_'";

/// The names that stand directly in one object, or at the top level.
struct NamesInside {
    FirstSeen objects;
    FirstSeen parameters;
};

struct OpenObject {
    std::size_t number = 0;  ///< the same for all objects of one path
    Place place;
};

std::string describe(char c) {
    if (c == '\t') return "a tab";
    if (c >= ' ' && c <= '~') return {'\'', c, '\''};
    constexpr const char* kDigits = "0123456789ABCDEF";
    const auto byte = static_cast<unsigned char>(c);
    return std::string("the byte 0x") + kDigits[byte / 16] + kDigits[byte % 16];
}

std::string describeObject(const std::string& type, const std::string& name) {
    return "object '" + shown(name.empty() ? type : type + ": " + name) + "'";
}

class Checker {
public:
    Checker(const Source& checkedSource, Demand demanded, const Settings& givenSettings,
            std::size_t limit)
        : source(checkedSource),
          demand(demanded),
          settings(givenSettings),
          maxProblems(limit),
          lines(checkedSource.text()) {}

    Findings run() {
        if (source.hasByteOrderMark)
            warn("byte-order-mark", {1, 1, firstLine()},
                 "byte order mark; the library refuses it: save the file without one");
        while (lines.next()) checkLine();
        for (const OpenObject& object : openObjects)
            warn("never-closed", object.place, "object is never closed: its END is missing");
        std::stable_sort(
            findings.problems.begin(), findings.problems.end(),
            [](const Problem& a, const Problem& b) { return a.place.line < b.place.line; });
        return std::move(findings);
    }

private:
    std::string_view firstLine() const { return source.text().substr(0, source.text().find('\n')); }

    void checkLine() {
        const MiniKDXParser::lineType type =
            MiniKDXParser::determineLineType(lines.text(), first, second);
        if (demand == Demand::style) checkBytes(type);
        switch (type) {
            case MiniKDXParser::lineUnrecognised: return checkUnrecognised();
            case MiniKDXParser::lineObject: return checkObject();
            case MiniKDXParser::lineParameter: return checkParameter();
            case MiniKDXParser::lineEnd: return checkEnd();
            case MiniKDXParser::lineVerbatim:
            case MiniKDXParser::lineBlank:
            case MiniKDXParser::lineAction: return;
        }
    }

    /// The first byte of the line that is no blank.
    std::size_t lineBegin() const {
        return lines.text().size() - withoutLeadingBlanks(lines.text()).size();
    }

    void checkUnrecognised() {
        const std::size_t offset = lineBegin() + first.size();
        const std::string_view meaning = std::string_view(lines.text()).substr(0, commentBegin());
        if (offset < withoutTrailingBlanks(meaning).size())
            return fail("unknown-syntax", offset,
                        "unknown syntax: " + describe(meaning[offset]) +
                            " cannot stand here; a name consists of " + kNameCharacters);
        if (first == "end" || first == "End")
            return fail("unknown-syntax", lineBegin(),
                        "unknown syntax: END is written in capitals");
        fail("unknown-syntax", offset, "unknown syntax: ':' or '=' is missing after the name");
    }

    void checkObject() {
        if (openObjects.size() == settings.maxDepth)
            fail("too-deep", lineBegin(),
                 "objects are nested deeper than " + std::to_string(settings.maxDepth) +
                     " levels, the limit that --max-depth sets");
        const std::size_t number = demand == Demand::style ? numberOfObject() : 0;
        openObjects.push_back({number, lines.placeOf(lineBegin())});
    }

    std::size_t numberOfObject() {
        name = first;
        if (!second.empty() && second != first) name.append(1, ':').append(second);
        FirstSeen& siblings = inside[openObjects.empty() ? 0 : openObjects.back().number].objects;
        const auto [object, isNew] = siblings.see(name, {firstLineNumber(), inside.size()});
        if (isNew)
            inside.emplace_back();
        else
            warn("repeated-object", lines.placeOf(lineBegin()),
                 describeObject(first, second) +
                     " again: its parameters merge into those of line " +
                     std::to_string(object.line));
        return object.number;
    }

    std::size_t firstLineNumber() const { return lines.pieces().front().line; }

    void checkParameter() {
        if (openObjects.empty()) {
            if (demand == Demand::lines) return;
            return fail("no-object", lineBegin(),
                        "parameter '" + shown(first) + "' stands in no object");
        }
        if (demand != Demand::style) return;
        FirstSeen& siblings = inside[openObjects.back().number].parameters;
        const auto [parameter, isNew] = siblings.see(first, {firstLineNumber(), 0});
        if (!isNew)
            warn("repeated-parameter", lines.placeOf(lineBegin()),
                 "parameter '" + shown(first) + "' again: its first value, of line " +
                     std::to_string(parameter.line) + ", is kept");
    }

    void checkEnd() {
        if (!openObjects.empty()) return openObjects.pop_back();
        if (demand != Demand::lines)
            fail("unexpected-end", lineBegin(), "END closes nothing: no object is open");
    }

    /// What the bytes of a line give away, whatever the line says.
    void checkBytes(MiniKDXParser::lineType type) {
        const std::size_t nul = lines.text().find('\0');
        if (nul != std::string::npos) warn("nul-byte", lines.placeOf(nul), "NUL byte");

        const Piece& last = lines.pieces().back();
        const std::string_view line = last.lineText;
        if (line.size() > 1 && line.substr(line.size() - 2) == "\\\r")
            warn("backslash-return", {last.line, line.size() - 1, line},
                 "a backslash in front of a carriage return continues nothing: end the line with "
                 "a line feed alone");

        if (lines.pieces().size() > 1 && type != MiniKDXParser::lineVerbatim) checkSwallowed();
    }

    /// Whether a comment hides the lines that continue it.
    void checkSwallowed() {
        const std::size_t comment = findComment(lines.text());
        if (comment == std::string::npos) return;
        const Piece* next = &lines.pieceAt(comment) + 1;
        if (next == lines.pieces().data() + lines.pieces().size()) return;
        const std::string_view rest = std::string_view(lines.text()).substr(next->begin);
        if (withoutLeadingBlanks(rest).empty()) return;
        warn("swallowed-continuation", lines.placeOf(comment),
             "the comment swallows the lines that continue this one");
    }

    std::size_t commentBegin() const {
        return std::min(findComment(lines.text()), lines.text().size());
    }

    void fail(const char* rule, std::size_t offset, std::string text) {
        ++findings.errors;
        if (maxProblems != 0 && findings.errors > maxProblems) return;
        findings.problems.push_back(
            {Severity::error, rule, lines.placeOf(offset), std::move(text)});
    }

    void warn(const char* rule, const Place& place, std::string text) {
        if (demand != Demand::style) return;
        ++findings.warnings;
        if (maxProblems != 0 && findings.warnings > maxProblems) return;
        findings.problems.push_back({Severity::warning, rule, place, std::move(text)});
    }

    const Source& source;
    Demand demand;
    const Settings& settings;
    std::size_t maxProblems;
    LogicalLines lines;
    std::string first;
    std::string second;
    std::string name;
    std::vector<NamesInside> inside =
        std::vector<NamesInside>(1);  // every object, by its number; 0 is the top level
    std::vector<OpenObject> openObjects;
    Findings findings;
};

}  // namespace

Findings check(const Source& source, Demand demand, const Settings& settings,
               std::size_t maxProblems) {
    return Checker(source, demand, settings, maxProblems).run();
}

void appendFindings(std::string& out, std::string_view file, const Findings& findings,
                    const Settings& settings) {
    for (const Problem& problem : findings.problems) appendProblem(out, file, problem, settings);
    const std::size_t hidden = findings.errors + findings.warnings - findings.problems.size();
    if (hidden == 0) return;
    appendProblem(out, file,
                  {Severity::note,
                   "hidden",
                   {},
                   counted(hidden, "more problem") + " not shown (--max-errors)"},
                  settings);
}

}  // namespace kdx
