#include "Checker.h"

#include <kiv/MiniKDXParser.h>

#include <algorithm>
#include <optional>

#include "Blank.h"
#include "FirstSeen.h"

namespace kdx {
namespace {

using kiv::MiniKDXParser;

constexpr const char* kNameCharacters = "letters, digits, blanks, '&', '.' and '_'";
constexpr std::size_t kSeamDistance = std::size_t{64} * 1024;

/// The names that stand directly in one object, or at the top level.
struct NamesInside {
    FirstSeen objects;
    FirstSeen parameters;

    void clear() {
        objects.clear();
        parameters.clear();
    }
};

/// Of which objects the names inside are remembered.
enum class Memory {
    open,  ///< of those that are open, which is enough when no object appears twice
    all,
};

struct OpenObject {
    std::size_t number = 0;  ///< among those whose names are remembered; one for each path
    Place place;
};

std::string describeObject(const std::string& type, const std::string& name) {
    return "object '" + shown(name.empty() ? type : type + ": " + name) + "'";
}

class Checker {
public:
    Checker(const Source& checkedSource, Demand demanded, const Settings& givenSettings,
            std::size_t maxProblems, Memory givenMemory)
        : source(checkedSource),
          demand(demanded),
          settings(givenSettings),
          memory(givenMemory),
          lines(checkedSource.text()),
          report{Findings(maxProblems), {}} {}

    /// Checks the text. @return nothing when that needs more memory than was given.
    std::optional<Report> run() {
        if (source.hasByteOrderMark)
            warn("byte-order-mark", {1, 1, firstLine()},
                 "byte order mark; kdx passes over it, but it is no KDX, and other programs may "
                 "refuse the line: save the file without one");
        hasNul = source.text().find('\0') != std::string_view::npos;
        while (lines.next()) {
            checkLine();
            if (outgrown) return std::nullopt;
        }
        for (const OpenObject& object : openObjects)
            warn("never-closed", object.place, "object is never closed: its END is missing");
        return std::move(report);
    }

private:
    std::string_view firstLine() const { return source.text().substr(0, source.text().find('\n')); }

    void checkLine() {
        const MiniKDXParser::lineType type =
            demand == Demand::style ? lines.classify(first, second) : lines.classify();
        if (demand == Demand::style) checkBytes(type);
        switch (type) {
            case MiniKDXParser::lineUnrecognised: return checkUnrecognised();
            case MiniKDXParser::lineObject: return checkObject();
            case MiniKDXParser::lineParameter: return checkParameter();
            case MiniKDXParser::lineEnd: return checkEnd();
            case MiniKDXParser::lineVerbatim:
            case MiniKDXParser::lineBlank:
            case MiniKDXParser::lineAction: return noteSeam();
        }
    }

    /// The first byte of the line that is no blank.
    std::size_t lineBegin() const {
        return lines.text().size() - withoutLeadingBlanks(lines.text()).size();
    }

    void checkUnrecognised() {
        lines.classify(first, second);
        const std::size_t offset = lineBegin() + first.size();
        const std::string_view meaning = lines.text().substr(0, commentBegin());
        if (offset < withoutTrailingBlanks(meaning).size())
            return fail("unknown-syntax", offset,
                        "unknown syntax: " + describedByte(meaning[offset]) +
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
        const std::size_t next = memory == Memory::open ? openObjects.size() + 1 : inside.size();
        FirstSeen& siblings = inside[openObjects.empty() ? 0 : openObjects.back().number].objects;
        const auto [object, isNew] = siblings.see(name, {firstLineNumber(), next});
        if (isNew) {
            makeRoom(next);
            return next;
        }
        outgrown = memory == Memory::open;
        warn("repeated-object", lines.placeOf(lineBegin()),
             describeObject(first, second) + " again: its parameters merge into those of line " +
                 std::to_string(object.line));
        return object.number;
    }

    void makeRoom(std::size_t number) {
        if (number == inside.size()) inside.emplace_back();
        inside[number].clear();
    }

    std::size_t firstLineNumber() const { return lines.pieces().front().line; }

    void checkParameter() {
        if (openObjects.empty()) {
            if (demand == Demand::lines) return;
            lines.classify(first, second);
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
        if (openObjects.empty()) {
            if (demand != Demand::lines)
                fail("unexpected-end", lineBegin(), "END closes nothing: no object is open");
            return;
        }
        openObjects.pop_back();
        noteSeam();
    }

    /// Notes that the text can be cut behind this line, if it stands outside of all objects and
    /// nobody might read it as continued.
    void noteSeam() {
        if (!openObjects.empty()) return;
        const std::size_t offset = source.text().size() - lines.textBehind().size();
        const std::size_t last = report.seams.empty() ? 0 : report.seams.back();
        if (offset - last < kSeamDistance) return;
        if (lines.pieces().size() > 1 || lines.text().find('\\') != std::string_view::npos) return;
        report.seams.push_back(offset);
    }

    /// What the bytes of a line give away, whatever the line says.
    void checkBytes(MiniKDXParser::lineType type) {
        const std::size_t nul = hasNul ? lines.text().find('\0') : std::string_view::npos;
        if (nul != std::string_view::npos) warn("nul-byte", lines.placeOf(nul), "NUL byte");

        const Piece& last = lines.pieces().back();
        const std::string_view line = last.lineText;
        if (line.size() > 1 && line.substr(line.size() - 2) == "\\\r" &&
            findComment(lines.text()) == std::string_view::npos)
            warn("backslash-return", {last.line, line.size() - 1, line},
                 "a backslash in front of a carriage return continues nothing: end the line with "
                 "a line feed alone");

        if (lines.pieces().size() > 1 && type != MiniKDXParser::lineVerbatim) checkSwallowed();
    }

    /// Whether a comment hides the lines that continue it.
    void checkSwallowed() {
        const std::size_t comment = findComment(lines.text());
        if (comment == std::string_view::npos) return;
        const Piece* next = &lines.pieceAt(comment) + 1;
        if (next == lines.pieces().data() + lines.pieces().size()) return;
        const std::string_view rest = lines.text().substr(next->begin);
        if (withoutLeadingBlanks(rest).empty()) return;
        warn("swallowed-continuation", lines.placeOf(comment),
             "the comment swallows the lines that continue this one");
    }

    std::size_t commentBegin() const {
        return std::min(findComment(lines.text()), lines.text().size());
    }

    void fail(const char* rule, std::size_t offset, std::string text) {
        report.findings.add({Severity::error, rule, lines.placeOf(offset), std::move(text)});
    }

    void warn(const char* rule, const Place& place, std::string text) {
        if (demand == Demand::style)
            report.findings.add({Severity::warning, rule, place, std::move(text)});
    }

    const Source& source;
    Demand demand;
    const Settings& settings;
    Memory memory;
    LogicalLines lines;
    std::string first;  // the halves of the line, filled in when they are needed
    std::string second;
    std::string name;
    bool hasNul = false;
    bool outgrown = false;
    std::vector<NamesInside> inside = std::vector<NamesInside>(1);  // 0 is the top level
    std::vector<OpenObject> openObjects;
    Report report;
};

}  // namespace

Report check(const Source& source, Demand demand, const Settings& settings,
             std::size_t maxProblems) {
    const auto checkWith = [&](Memory memory) {
        return Checker(source, demand, settings, maxProblems, memory).run();
    };
    std::optional<Report> report = checkWith(Memory::open);
    return report ? *std::move(report) : checkWith(Memory::all).value();
}

}  // namespace kdx
