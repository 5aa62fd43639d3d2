#include "parser/LineClassification.h"

#include <utility>

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

/// The name characters that a text begins with.
struct NameRun {
    std::size_t wordLength;  // up to the first space
    std::size_t length;
    char stop;  // the byte behind them, '\0' at the end of the text
};

/// The run at the beginning of the text, of which so many bytes are known to belong to it.
NameRun nameRun(std::string_view text, std::size_t length) {
    while (length < text.size() && isWordCharacter(text[length])) ++length;
    const std::size_t wordLength = length;
    while (length < text.size() && isNameCharacter(text[length])) ++length;
    return {wordLength, length, length < text.size() ? text[length] : '\0'};
}

/// The run without blanks that carry no meaning, in `storage` where it needs one.
std::string_view nameOf(std::string_view text, const NameRun& run, std::string& storage) {
    // One word, and a space behind it if any, is what most lines begin with.
    if (run.length - run.wordLength <= 1) return text.substr(0, run.wordLength);
    return simplified(withoutTrailingBlanks(text.substr(0, run.length)), storage);
}

/// The kind of a line, without leading blanks, that is neither an object nor a parameter. The
/// comment begins behind the name characters at the earliest.
LineType classifyOther(std::string_view text, std::size_t nameLength) {
    const std::string_view trimmed = trimLine(text, nameLength);
    if (trimmed.empty()) return MiniKDXParser::lineBlank;
    if (trimmed.front() == '!' || trimmed.front() == '$') return MiniKDXParser::lineVerbatim;
    if (trimmed.front() == '>') return MiniKDXParser::lineAction;
    if (trimmed == "END") return MiniKDXParser::lineEnd;
    return MiniKDXParser::lineUnrecognised;
}

}  // namespace

// A name holds no '#', so that what ends it decides before anything is known of a comment.
LineType classifyLine(std::string_view line, std::size_t nameLength) {
    const std::string_view text = withoutLeadingBlanks(line);
    const NameRun run = nameRun(text, nameLength);
    if (run.stop == ':') return MiniKDXParser::lineObject;
    if (run.stop == '=') return MiniKDXParser::lineParameter;
    return classifyOther(text, run.length);
}

LineType LineSplitter::split(std::string_view line) {
    const std::string_view text = withoutLeadingBlanks(line);
    const NameRun run = nameRun(text, 0);
    if (run.stop != ':' && run.stop != '=') {
        const LineType kind = classifyOther(text, run.length);
        const bool known = kind != MiniKDXParser::lineUnrecognised;
        firstHalf = known ? std::string_view() : trimLine(text).substr(0, run.length);
        secondHalf = {};
        return kind;
    }
    firstHalf = nameOf(text, run, simplifiedFirst);
    secondHalf = withoutOuterBlanks(withoutComment(text.substr(run.length + 1), 0));
    if (run.stop == '=') return MiniKDXParser::lineParameter;
    secondHalf = simplified(secondHalf, simplifiedSecond);
    return MiniKDXParser::lineObject;
}

}  // namespace detail

MiniKDXParser::lineType MiniKDXParser::determineLineType(const std::string& line,
                                                         std::string& first, std::string& second) {
    detail::LineSplitter splitter;
    const lineType kind = splitter.split(line);
    // The halves are views of the line, which the caller may use as one of the outputs.
    std::string secondHalf(splitter.second());
    first = std::string(splitter.first());
    second = std::move(secondHalf);
    return kind;
}

MiniKDXParser::lineType MiniKDXParser::determineLineType(const std::string& line) {
    return detail::classifyLine(line);
}

}  // namespace kiv
