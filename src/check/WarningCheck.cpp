#include "check/WarningCheck.h"

#include <functional>

#include "base/Blank.h"
#include "base/LineEnd.h"
#include "base/NameCharacter.h"
#include "base/ObjectName.h"
#include "base/ShownText.h"
#include "check/IgnoreComment.h"
#include "check/LineEndCheck.h"
#include "check/MessageText.h"
#include "check/StatementPlaces.h"

namespace kiv::detail {
namespace {

using Part = KDXReader::Part;

bool startsWith(std::string_view text, std::string_view beginning) {
    return text.substr(0, beginning.size()) == beginning;
}

/// How long what the text's first line says is.
std::size_t lengthOfStatement(std::string_view rest) {
    KDXReader reader(rest.substr(0, rest.find('\n')));
    reader.next();
    return reader.text().size();
}

/// How the last line of a text that is ended is ended.
std::string_view lastLineEnd(std::string_view text) {
    const std::string_view end = lineEndOf(text.substr(0, text.rfind('\n') + 1));
    return end.empty() ? "\n" : end;
}

/// Whether `end` is a statement of its own behind the last one of a text.
bool standsBehind(std::string last, const std::string& end) {
    last += end;
    KDXReader reader(last);
    return reader.next() && reader.next() && reader.source() == end;
}

/// What to put behind the last statement of a text, so that an END stands there.
std::string endBehind(std::string_view text, std::string_view lastSource,
                      std::string_view indentation) {
    const std::string_view lineEnd = lastLineEnd(text);
    const std::string end = std::string(indentation).append("END").append(lineEnd);
    // An open line has to be ended first, and then what continues it, which an empty line does. No
    // line is continued by a backslash and a carriage return.
    const std::string_view ended = text.back() == '\\' ? "\n" : lineEnd;
    std::string gap;
    while (!standsBehind(std::string(lastSource).append(gap), end)) gap += ended;
    return gap + end;
}

}  // namespace

WarningCheck::WarningCheck(std::string_view wholeText, const KDXReader& givenReader,
                           ProblemList& givenProblems, NameCheck::Memory memory)
    : text(wholeText),
      reader(givenReader),
      problems(givenProblems),
      hasNul(text.find('\0') != std::string_view::npos),
      isUtf8(findNoUtf8(text) == std::string_view::npos),
      endComments(text),
      names(memory) {
    if (reader.hasByteOrderMark()) checkByteOrderMark();
}

void WarningCheck::check() {
    noteIgnored();
    lastSource = reader.source();
    if (hasNul || !isUtf8) checkBytes();
    if (hasFinalBackslash(reader)) checkLineEnds(reader, problems);
    indentation = indentationOf(reader);
    switch (reader.kind()) {
        case MiniKDXParser::lineObject: return checkObject();
        case MiniKDXParser::lineParameter: return checkParameter();
        case MiniKDXParser::lineEnd: return checkEnd();
        case MiniKDXParser::lineUnrecognised:
        case MiniKDXParser::lineVerbatim:
        case MiniKDXParser::lineAction:
        case MiniKDXParser::lineBlank: return;
    }
}

/// Notes what comments ignore: the statement's own, and those above it.
void WarningCheck::noteIgnored() {
    comment = reader.comment();
    ignored = isDirective(comment) ? pending | rulesIgnoredBy(comment) : pending;
    pending = reader.kind() == MiniKDXParser::lineBlank ? ignored : RuleSet();
    problems.ignore(ignored);
}

void WarningCheck::checkByteOrderMark() {
    problems.add(CheckRule::byteOrderMark, [&] {
        const std::size_t length = kByteOrderMark.size();
        const bool again = startsWithByteOrderMark(text.substr(length));
        const KDXCheck::Fix fix{"Remove the byte order mark", {{0, length, ""}}, !again};
        return Finding{{},
                       {length, 1, 1},
                       "byte order mark; it is passed over, but it is no KDX, and other programs "
                       "may refuse the line: save the file without one",
                       {},
                       fix};
    });
}

void WarningCheck::checkBytes() {
    const std::string_view source = reader.source();
    const std::size_t nul = hasNul ? source.find('\0') : std::string_view::npos;
    if (nul != std::string_view::npos)
        problems.add(CheckRule::nulByte, [&] {
            const KDXPlace place = reader.placeInSource(nul);
            return Finding{place, behind(place, 1), "NUL byte", {}, {}};
        });
    const std::size_t noUtf8 = isUtf8 ? std::string_view::npos : findNoUtf8(source);
    if (noUtf8 != std::string_view::npos)
        problems.add(CheckRule::noUtf8, [&] {
            const KDXPlace place = reader.placeInSource(noUtf8);
            return Finding{place,
                           behind(place, 1),
                           describedCharacter(source.substr(noUtf8)) +
                               " is no UTF-8; convert the file, as with iconv -f LATIN1 -t UTF-8",
                           {},
                           {}};
        });
}

void WarningCheck::checkObject() {
    begin = placeOf(reader, text, indentation);
    // The mark that replaces an object may stand in front of the indentation.
    if (startsWith(reader.first(), kReplaceMark)) indentation = {};
    checkIndentation(false);
    checkEndAsName();
    checkSlash();
    checkHash();
    const SeenName name = objectName();
    if (const auto first = names.open(name, begin))
        problems.add(CheckRule::repeatedObject, [&] {
            return Finding{begin,
                           endOf(reader, begin),
                           describedObject({name.first, kept(reader.second())}) +
                               " again: its parameters merge into those " + ofLine(*first),
                           first,
                           {}};
        });
    const OpenObject object{name, begin, indentation};
    levels.open(object);
    openObjects.push_back({object, ignored});
}

void WarningCheck::checkParameter() {
    begin = placeOf(reader, text, indentation);
    checkEndAsName();
    checkHash();
    if (openObjects.empty()) return;
    checkIndentation(false);
    levels.parameter(indentation);
    const auto first = names.addParameter({kept(reader.first()), {}}, begin);
    if (!first) return;
    problems.add(CheckRule::repeatedParameter, [&] {
        return Finding{begin,
                       endOf(reader, begin),
                       "parameter '" + shown(reader.first()) + "' again: its first value, " +
                           ofLine(*first) + ", is kept",
                       first,
                       {}};
    });
}

void WarningCheck::checkEnd() {
    if (openObjects.empty()) return;
    begin = placeOf(reader, text, indentation);
    checkEndComment();
    checkEndIndentation();
    openObjects.pop_back();
    names.close();
    if (openObjects.empty()) levels.clear();
}

/// Says of which objects the END seems to be missing in front of the statement.
void WarningCheck::checkIndentation(bool isEnd) {
    while (const OpenObject* object = levels.contradicted(indentation, isEnd)) {
        reportIndentation(*object);
        levels.leave();
    }
}

void WarningCheck::reportIndentation(const OpenObject& object) {
    problems.add(CheckRule::indentation, [&] {
        return Finding{begin,
                       endOf(reader, begin),
                       "the indentation contradicts the nesting: the END of " +
                           describedObject(object.name) + ' ' + ofLine(object.begin) +
                           " seems to be missing in front of this line",
                       object.begin,
                       {}};
    });
}

void WarningCheck::checkEndIndentation() {
    checkIndentation(true);
    if (const auto closed = levels.closedAbove(indentation)) return reportClosedAbove(*closed);
    levels.close(indentation);
}

void WarningCheck::reportClosedAbove(const KDXPlace& closed) {
    problems.add(CheckRule::indentation, [&] {
        const OpenObject& object = openObjects.back().object;
        return Finding{begin,
                       endOf(reader, begin),
                       "the indentation contradicts the nesting: this END closes " +
                           describedObject(object.name) + ' ' + ofLine(object.begin) +
                           ", but it stands under the object " + ofLine(closed) +
                           ", which is closed already",
                       object.begin,
                       {}};
    });
}

void WarningCheck::checkEndComment() {
    if (comment.empty() || isDirective(comment)) return;
    const OpenObject& object = openObjects.back().object;
    if (!endComments.namesAnother(comment, object.name)) return;
    problems.add(CheckRule::endComment, [&] {
        return Finding{reader.placeOf(Part::comment), reader.placeOf(Part::comment, comment.size()),
                       "the comment of this END names another object, but it closes " +
                           describedObject(object.name) + ' ' + ofLine(object.begin),
                       object.begin, endCommentFix(object.name)};
    });
}

/// It may be the nesting that is wrong, and not the comment: no such fix is safe.
std::optional<KDXCheck::Fix> WarningCheck::endCommentFix(const SeenName& object) const {
    const std::string right = endCommentOf(object);
    const bool hasBackslash =
        (std::string(reader.source()) + right).find('\\') != std::string::npos;
    if (hasBackslash) return std::nullopt;
    const std::size_t offset = reader.placeOf(Part::comment).offset;
    return KDXCheck::Fix{"Name the right object", {{offset, comment.size(), right}}, false};
}

void WarningCheck::checkEndAsName() {
    const std::string_view first = reader.first();
    if (first.empty() || first.front() != 'E') return;
    if (first != "END" && !startsWith(first, "END ")) return;
    problems.add(CheckRule::endAsName, [&] {
        const bool isObject = reader.kind() == MiniKDXParser::lineObject;
        return Finding{begin,
                       endOf(reader, begin),
                       std::string("this line is read as ") +
                           (isObject ? "an object" : "a parameter") +
                           ", not as an END: put a '#' in front of what stands behind END",
                       {},
                       {}};
    });
}

/// Whether a '#' was meant to be a part of a value, or of a name.
void WarningCheck::checkHash() {
    if (comment.empty()) return;
    const bool empty = reader.kind() == MiniKDXParser::lineParameter && reader.second().empty();
    const bool cuts = !reader.second().empty() && !isBlank(*(comment.data() - 1));
    if (!empty && !cuts) return;
    problems.add(CheckRule::hashInValue, [&] {
        const KDXPlace place = reader.placeOf(Part::comment);
        const KDXCheck::Fix fix{
            "Put a blank in front of the comment", {{place.offset, 0, " "}}, true};
        return Finding{place,
                       reader.placeOf(Part::comment, comment.size()),
                       std::string("this '#' begins a comment and ") +
                           (empty ? "leaves the value empty" : "ends what stands in front of it") +
                           "; a '#' of its own needs a backslash in front of it",
                       {},
                       empty || reader.isContinued() ? std::nullopt : std::optional(fix)};
    });
}

void WarningCheck::checkSlash() {
    const std::size_t slash = reader.second().find('/');
    if (slash == std::string_view::npos) return;
    problems.add(CheckRule::slashInName, [&] {
        const KDXPlace place = reader.placeOf(Part::second, slash);
        return Finding{place,
                       behind(place, 1),
                       "the '/' makes the path of this object ambiguous: it reads as the path of "
                       "an object inside another",
                       {},
                       {}};
    });
}

void WarningCheck::finish() {
    for (const Opened& opened : openObjects)
        reportNeverClosed(opened, &opened == &openObjects.back());
}

void WarningCheck::reportNeverClosed(const Opened& opened, bool isInnermost) {
    problems.ignore(opened.ignored);
    problems.add(CheckRule::neverClosed, [&] {
        const KDXPlace& place = opened.object.begin;
        Finding finding{
            place,
            behind(place, lengthOfStatement(text.substr(place.offset))),
            describedObject(opened.object.name) + " is never closed: its END is missing",
            {},
            {}};
        if (!isInnermost) return finding;
        const std::string end = endBehind(text, lastSource, opened.object.indentation);
        finding.fix = {"Add its END at the end of the text", {{text.size(), 0, end}}, false};
        return finding;
    });
}

/// The name as a view that lives as long as the check.
std::string_view WarningCheck::kept(std::string_view name) {
    const std::less<> isBefore;
    const bool inText = !isBefore(name.data(), text.data()) &&
                        !isBefore(text.data() + text.size(), name.data() + name.size());
    return inText || name.empty() ? name : keptNames.emplace_back(name);
}

SeenName WarningCheck::objectName() {
    const bool named = reader.second() != reader.first();
    return {kept(reader.first()), named ? kept(reader.second()) : std::string_view()};
}

}  // namespace kiv::detail
