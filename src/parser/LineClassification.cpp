#include "parser/LineClassification.h"

#include "external/Blank.h"
#include "external/Whitespace.h"
#include "parser/LineTrimming.h"
#include "parser/NameCharacter.h"

// A line, without its comment and outer blanks, is
//
//     nothing                          blank
//     '!' or '$' and any text          verbatim
//     '>' and any text                 action
//     "END"                            end
//     NAME ':' any text                object: type, name
//     NAME '=' any text                parameter: name, value
//
// where NAME is a run of name characters, possibly empty; everything else is unrecognised.

namespace kiv {
namespace detail {
namespace {

/// A line's kind and, of an object, a parameter or an unrecognised line, its halves as they stand
/// in the line.
struct ClassifiedLine {
    MiniKDXParser::lineType type;
    std::string_view first;
    std::string_view second;
};

/// The length of the name characters that the text begins with; at least `length` of them do.
std::size_t nameRunLength(std::string_view text, std::size_t length) {
    while (length < text.size() && isNameCharacter(text[length])) ++length;
    return length;
}

/// Classifies a line without leading blanks. A name holds no '#', so that what ends it decides
/// before anything is known of a comment; only what is left then is trimmed.
ClassifiedLine classify(std::string_view text, std::size_t nameLength) {
    if (text.empty()) return {MiniKDXParser::lineBlank, {}, {}};
    if (text.front() == '!' || text.front() == '$') return {MiniKDXParser::lineVerbatim, {}, {}};
    if (text.front() == '>') return {MiniKDXParser::lineAction, {}, {}};

    const std::size_t length = nameRunLength(text, nameLength);
    const std::string_view run = text.substr(0, length);
    const char stop = length < text.size() ? text[length] : '\0';
    if (stop == ':') return {MiniKDXParser::lineObject, run, text.substr(length + 1)};
    if (stop == '=') return {MiniKDXParser::lineParameter, run, text.substr(length + 1)};

    const std::string_view trimmed = trimLine(text, length);
    if (trimmed.empty()) return {MiniKDXParser::lineBlank, {}, {}};
    if (trimmed == "END") return {MiniKDXParser::lineEnd, {}, {}};
    return {MiniKDXParser::lineUnrecognised, trimmed.substr(0, length), {}};
}

/// What stands behind the ':' or '=' of a line, without comment and outer blanks.
std::string_view secondHalf(std::string_view text) {
    return withoutOuterBlanks(withoutComment(text, 0));
}

}  // namespace

MiniKDXParser::lineType classifyLine(std::string_view line, std::size_t nameLength) {
    return classify(withoutLeadingBlanks(line), nameLength).type;
}

MiniKDXParser::lineType splitLine(std::string_view line, std::string& first, std::string& second) {
    const ClassifiedLine classified = classify(withoutLeadingBlanks(line), 0);
    switch (classified.type) {
        case MiniKDXParser::lineObject:
            assignSimplified(first, classified.first);
            assignSimplified(second, secondHalf(classified.second));
            break;
        case MiniKDXParser::lineParameter:
            assignSimplified(first, classified.first);
            assignDisjoint(second, secondHalf(classified.second));
            break;
        case MiniKDXParser::lineUnrecognised:
        case MiniKDXParser::lineVerbatim:
        case MiniKDXParser::lineBlank:
        case MiniKDXParser::lineEnd:
        case MiniKDXParser::lineAction:
            assignDisjoint(first, classified.first);
            second.clear();
            break;
    }
    return classified.type;
}

}  // namespace detail

MiniKDXParser::lineType MiniKDXParser::determineLineType(const std::string& line,
                                                         std::string& first, std::string& second) {
    if (&line != &first && &line != &second) return detail::splitLine(line, first, second);
    return detail::splitLine(std::string(line), first, second);
}

MiniKDXParser::lineType MiniKDXParser::determineLineType(const std::string& line) {
    return detail::classifyLine(line);
}

}  // namespace kiv
