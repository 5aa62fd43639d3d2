#include "parser/LineClassification.h"

#include <algorithm>

#include "external/Blank.h"
#include "external/Whitespace.h"
#include "parser/LineTrimming.h"
#include "parser/NameCharacter.h"

// A trimmed line is
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

ClassifiedLine classifyTrimmed(std::string_view text, std::size_t nameLength) {
    if (text.empty()) return {MiniKDXParser::lineBlank, {}, {}};
    if (text.front() == '!' || text.front() == '$') return {MiniKDXParser::lineVerbatim, {}, {}};
    if (text.front() == '>') return {MiniKDXParser::lineAction, {}, {}};
    if (text == "END") return {MiniKDXParser::lineEnd, {}, {}};

    std::size_t length = std::min(nameLength, text.size());
    while (length < text.size() && isNameCharacter(text[length])) ++length;
    const std::string_view run = text.substr(0, length);
    if (length == text.size()) return {MiniKDXParser::lineUnrecognised, run, {}};
    const std::string_view rest = text.substr(length + 1);
    if (text[length] == ':') return {MiniKDXParser::lineObject, run, rest};
    if (text[length] == '=') return {MiniKDXParser::lineParameter, run, rest};
    return {MiniKDXParser::lineUnrecognised, run, {}};
}

}  // namespace

ClassifiedLine classifyLine(std::string_view line, std::size_t nameLength) {
    return classifyTrimmed(trimLine(line, nameLength), nameLength);
}

void assignHalves(const ClassifiedLine& line, std::string& first, std::string& second) {
    switch (line.type) {
        case MiniKDXParser::lineObject:
            assignSimplified(first, line.first);
            assignSimplified(second, line.second);
            return;
        case MiniKDXParser::lineParameter:
            assignSimplified(first, line.first);
            second.assign(withoutOuterBlanks(line.second));
            return;
        case MiniKDXParser::lineUnrecognised:
        case MiniKDXParser::lineVerbatim:
        case MiniKDXParser::lineBlank:
        case MiniKDXParser::lineEnd:
        case MiniKDXParser::lineAction:
            first.assign(line.first);
            second.clear();
            return;
    }
}

}  // namespace detail

MiniKDXParser::lineType MiniKDXParser::determineLineType(const std::string& line,
                                                         std::string& first, std::string& second) {
    if (&line == &first || &line == &second) {
        const std::string copy = line;
        return determineLineType(copy, first, second);
    }
    const detail::ClassifiedLine classified = detail::classifyLine(line);
    detail::assignHalves(classified, first, second);
    return classified.type;
}

MiniKDXParser::lineType MiniKDXParser::determineLineType(const std::string& line) {
    return detail::classifyLine(line).type;
}

}  // namespace kiv
