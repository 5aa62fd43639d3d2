#include "check/LineEndCheck.h"

#include <algorithm>
#include <string>

#include "base/Blank.h"
#include "check/StatementPlaces.h"
#include "parser/LogicalLine.h"

namespace kiv::detail {
namespace {

constexpr std::string_view kBackslash = "\\";

/// What a line would be by itself; empty for what says nothing to a reader.
const char* statementIn(std::string_view line) {
    switch (MiniKDXParser::determineLineType(std::string(line))) {
        case MiniKDXParser::lineObject: return "the object";
        case MiniKDXParser::lineParameter: return "the parameter";
        case MiniKDXParser::lineEnd: return "the END";
        case MiniKDXParser::lineAction: return "the action";
        case MiniKDXParser::lineUnrecognised:
        case MiniKDXParser::lineVerbatim:
        case MiniKDXParser::lineBlank: break;
    }
    return "";
}

/// The lines of one statement, from the first to the last.
class LineEndCheck {
public:
    LineEndCheck(const KDXReader& givenReader, ProblemList& givenProblems)
        : reader(givenReader), problems(givenProblems) {}

    void run() {
        checkComment();
        checkEnd();
        for (rest = reader.source(), begin = reader.placeInSource(0); !rest.empty(); takeLine())
            checkLine();
    }

private:
    std::string_view line() const { return rest.substr(0, rest.find('\n')); }
    bool isLastLine() const { return line().size() + 1 >= rest.size(); }

    void takeLine() {
        const std::size_t length = std::min(line().size() + 1, rest.size());
        rest.remove_prefix(length);
        begin = {begin.offset + length, begin.line + 1, 1};
    }

    void checkLine() {
        if (isLoneBackslash()) return checkLoneBackslash();
        if (!isLastLine()) return checkSwallowing();
        const std::string_view last = line();
        const bool hasReturn = last.size() > 1 && last.substr(last.size() - 2) == "\\\r";
        if (hasReturn && reader.comment().empty()) reportReturn(behind(begin, last.size() - 2));
    }

    /// Behind the first line, a backslash with blanks behind it is text.
    bool isLoneBackslash() const {
        if (rest.size() == reader.source().size()) return withoutOuterBlanks(line()) == kBackslash;
        return withoutLeadingBlanks(line()) == kBackslash;
    }

    void checkLoneBackslash() {
        if (reader.kind() == MiniKDXParser::lineUnrecognised) return;
        const KDXPlace backslash = behind(begin, line().find('\\'));
        problems.add(CheckRule::loneBackslash, [&] {
            return Finding{backslash,
                           behind(backslash, 1),
                           "this line holds nothing but a backslash: leave it out",
                           {},
                           {}};
        });
    }

    void reportReturn(const KDXPlace& backslash) {
        problems.add(CheckRule::backslashReturn, [&] {
            const KDXCheck::Fix fix{"Continue the line", {{backslash.offset + 1, 1, ""}}, false};
            return Finding{backslash,
                           behind(backslash, 2),
                           "a backslash in front of a carriage return continues nothing: end the "
                           "line with a line feed alone",
                           {},
                           fix};
        });
    }

    /// What continues the line begins where it may have been meant to begin a statement.
    void checkSwallowing() {
        const std::string_view joined = withoutTrailingBlanks(line());  // with its backslash
        const KDXPlace backslash = behind(begin, joined.size() - 1);
        hasHash = hasHash || joined.find('#') != std::string_view::npos;
        if (!maySwallow(joined.substr(0, joined.size() - 1), backslash)) return;
        const NextLine next = nextLine();
        const char* const swallowed = statementIn(next.text);
        if (*swallowed == '\0') return;
        problems.add(CheckRule::swallowedStatement, [&] {
            return Finding{
                backslash, behind(backslash, 1),
                "this backslash makes " + std::string(swallowed) + " in line " +
                    std::to_string(next.begin.line) + " a part of this one",
                behind(next.begin, next.text.size() - withoutLeadingBlanks(next.text).size()),
                fixFor(backslash, hasHash)};
        });
    }

    /// Whether the backslash behind this may be a mistake: it follows a blank or a comma where a
    /// line is continued on purpose.
    bool maySwallow(std::string_view before, const KDXPlace& backslash) const {
        switch (reader.kind()) {
            case MiniKDXParser::lineVerbatim: return true;
            case MiniKDXParser::lineObject:
            case MiniKDXParser::lineParameter:
            case MiniKDXParser::lineAction:
                return backslash.offset < commentOffset() && !before.empty() &&
                       before.back() != ',' && !isBlank(before.back());
            case MiniKDXParser::lineUnrecognised:
            case MiniKDXParser::lineEnd:
            case MiniKDXParser::lineBlank: break;
        }
        return false;
    }

    std::optional<KDXCheck::Fix> fixFor(const KDXPlace& backslash, bool withHash) const {
        if (reader.kind() == MiniKDXParser::lineVerbatim || withHash) return std::nullopt;
        return KDXCheck::Fix{"End the line here", {{backslash.offset + 1, 0, " #"}}, false};
    }

    struct NextLine {
        std::string_view text;
        KDXPlace begin;
    };

    /// The next line that is no lone backslash, as it would be by itself: what continues it is not
    /// looked at.
    NextLine nextLine() const {
        std::string_view unread = rest;
        KDXPlace place = begin;
        std::string_view next = kBackslash;
        while (withoutLeadingBlanks(next) == kBackslash && !unread.empty()) {
            const std::size_t length = std::min(unread.find('\n'), unread.size() - 1) + 1;
            unread.remove_prefix(length);
            place = {place.offset + length, place.line + 1, 1};
            next = unread.substr(0, unread.find('\n'));
        }
        return {isContinued(next) ? next.substr(0, next.size() - 1) : next, place};
    }

    std::size_t commentOffset() const {
        return hasComment ? comment.offset : std::string_view::npos;
    }

    /// Whether a comment hides the lines that continue it.
    void checkComment() {
        if (!hasComment || !reader.isContinued()) return;
        const std::string_view source = reader.source();
        const std::size_t inSource = comment.offset - reader.placeInSource(0).offset;
        const std::size_t lineEnd = std::min(source.find('\n', inSource), source.size());
        if (withoutLeadingBlanks(source.substr(lineEnd)).empty()) return;
        problems.add(CheckRule::swallowedContinuation, [&] {
            return Finding{comment,
                           behind(comment, 1),
                           "the comment swallows the lines that continue this one",
                           {},
                           {}};
        });
    }

    void checkEnd() {
        if (reader.kind() != MiniKDXParser::lineEnd || !reader.isContinued()) return;
        const std::size_t lastByte = reader.source().size() - reader.lineEnd().size();
        const KDXPlace end = hasComment ? comment : reader.placeInSource(lastByte);
        if (reader.place().line == end.line) return;
        problems.add(CheckRule::cutEnd, [&] {
            return Finding{reader.place(),
                           endOf(reader),
                           "this END is spread over several lines: put it on one",
                           {},
                           {}};
        });
    }

    const KDXReader& reader;
    ProblemList& problems;
    bool hasComment = !reader.comment().empty();
    KDXPlace comment = reader.placeOf(KDXReader::Part::comment);
    std::string_view rest;  // from the current line on
    KDXPlace begin;         // of the current line
    bool hasHash = false;   // in the lines so far
};

}  // namespace

void checkLineEnds(const KDXReader& reader, ProblemList& problems) {
    LineEndCheck(reader, problems).run();
}

}  // namespace kiv::detail
