#include "check/ErrorCheck.h"

#include <algorithm>

#include "base/Blank.h"
#include "base/NameCharacter.h"
#include "base/ShownText.h"
#include "check/MessageText.h"
#include "check/StatementPlaces.h"

namespace kiv::detail {
namespace {

using Part = KDXReader::Part;

constexpr std::string_view kEnd = "END";
constexpr const char* kNameCharacterList = "letters, digits, blanks, '&', '.' and '_'";

/// Whether a text is END but for the case of its letters.
bool isEndInAnyCase(std::string_view text) {
    const auto sameLetter = [](char a, char b) { return a == b || a == b - 'A' + 'a'; };
    return text.size() == kEnd.size() &&
           std::equal(text.begin(), text.end(), kEnd.begin(), sameLetter);
}

bool beginsWithEnd(std::string_view text) {
    return text.substr(0, kEnd.size()) == kEnd && !isWordCharacter(text[kEnd.size()]);
}

}  // namespace

void ErrorCheck::checkUnrecognised() {
    const std::string_view text = reader.text();
    if (isEndInAnyCase(text))
        return problems.add(CheckRule::endCase, [&] {
            const KDXPlace begin = reader.place();
            const KDXCheck::Fix fix{"Write END in capitals", {{begin.offset, 3, "END"}}, false};
            return Finding{begin,
                           endOf(reader),
                           "unknown syntax: an END has to be written in capitals",
                           {},
                           reader.isContinued() ? std::nullopt : std::optional(fix)};
        });
    if (text.size() > kEnd.size() && beginsWithEnd(text)) return reportTextBehindEnd();
    if (reader.first().size() < text.size()) return reportUnknownByte();
    problems.add(CheckRule::unknownSyntax, [&] {
        const KDXPlace end = endOf(reader);
        return Finding{end, end, "unknown syntax: ':' or '=' is missing after the name", {}, {}};
    });
}

void ErrorCheck::reportTextBehindEnd() {
    problems.add(CheckRule::textBehindEnd, [&] {
        const std::string_view behindEnd = reader.text().substr(kEnd.size());
        const std::size_t begin = reader.text().size() - withoutLeadingBlanks(behindEnd).size();
        const KDXPlace place = reader.placeOf(Part::text, begin);
        const KDXCheck::Fix fix{"Make it a comment", {{place.offset, 0, " # "}}, false};
        return Finding{place,
                       endOf(reader),
                       "unknown syntax: nothing but a comment may stand behind END",
                       {},
                       fix};
    });
}

void ErrorCheck::reportUnknownByte() {
    problems.add(CheckRule::unknownSyntax, [&] {
        const std::size_t byte = reader.first().size();
        const std::string_view rest = reader.text().substr(byte);
        const KDXPlace last = reader.placeOf(Part::text, byte + characterLength(rest) - 1);
        return Finding{reader.placeOf(Part::text, byte),
                       behind(last, 1),
                       "unknown syntax: " + describedCharacter(rest) +
                           " cannot stand here; a name consists of " + kNameCharacterList,
                       {},
                       {}};
    });
}

void ErrorCheck::reportTooDeep() {
    problems.add(CheckRule::tooDeep, [&] {
        return Finding{
            reader.place(),
            endOf(reader),
            "objects are nested deeper than the limit of " + std::to_string(maxDepth) + " levels",
            {},
            {}};
    });
}

void ErrorCheck::reportNoObject() {
    problems.add(CheckRule::noObject, [&] {
        return Finding{reader.place(),
                       endOf(reader),
                       "parameter '" + shown(reader.first()) + "' stands in no object",
                       {},
                       {}};
    });
}

void ErrorCheck::reportUnexpectedEnd() {
    problems.add(CheckRule::unexpectedEnd, [&] {
        const std::size_t offset = reader.placeInSource(0).offset;
        const KDXCheck::Fix fix{"Remove this END", {{offset, reader.source().size(), ""}}, true};
        return Finding{reader.place(),
                       endOf(reader),
                       "END closes nothing: no object is open",
                       {},
                       canGo() ? std::optional(fix) : std::nullopt};
    });
}

/// Whether nothing else is lost or read otherwise when the statement is removed. Its comment may
/// have taken in lines that were meant to say something; what comes to the beginning of the text
/// may be taken for a byte order mark.
bool ErrorCheck::canGo() const {
    const bool begins = reader.source().data() == wholeText.data();
    return !reader.isContinued() &&
           !(begins && startsWithByteOrderMark(wholeText.substr(reader.source().size())));
}

}  // namespace kiv::detail
