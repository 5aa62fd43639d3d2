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

/// The name characters that a text begins with, and the byte that ends them.
struct NameRun {
    std::string_view name;
    char stop;  // '\0' at the end of the text
};

/// The run at the beginning of the text, of which so many bytes are known to belong to it.
NameRun nameRun(std::string_view text, std::size_t length) {
    while (length < text.size() && isNameCharacter(text[length])) ++length;
    return {text.substr(0, length), length < text.size() ? text[length] : '\0'};
}

/// The kind of a line, without leading blanks, that is neither an object nor a parameter. The
/// comment begins behind the name characters at the earliest.
MiniKDXParser::lineType classifyOther(std::string_view text, std::size_t nameLength) {
    const std::string_view trimmed = trimLine(text, nameLength);
    if (trimmed.empty()) return MiniKDXParser::lineBlank;
    if (trimmed.front() == '!' || trimmed.front() == '$') return MiniKDXParser::lineVerbatim;
    if (trimmed.front() == '>') return MiniKDXParser::lineAction;
    if (trimmed == "END") return MiniKDXParser::lineEnd;
    return MiniKDXParser::lineUnrecognised;
}

/// What stands behind the ':' or '=' of a line, without comment and outer blanks.
std::string_view secondHalf(std::string_view text, std::size_t nameLength) {
    return withoutOuterBlanks(withoutComment(text.substr(nameLength + 1), 0));
}

}  // namespace

// A name holds no '#', so that what ends it decides before anything is known of a comment.
MiniKDXParser::lineType classifyLine(std::string_view line, std::size_t nameLength) {
    const std::string_view text = withoutLeadingBlanks(line);
    const auto [name, stop] = nameRun(text, nameLength);
    if (stop == ':') return MiniKDXParser::lineObject;
    if (stop == '=') return MiniKDXParser::lineParameter;
    return classifyOther(text, name.size());
}

MiniKDXParser::lineType splitLine(std::string_view line, std::string& first, std::string& second) {
    const std::string_view text = withoutLeadingBlanks(line);
    const auto [name, stop] = nameRun(text, 0);
    if (stop == ':') {
        assignSimplified(first, withoutTrailingBlanks(name));
        assignSimplified(second, secondHalf(text, name.size()));
        return MiniKDXParser::lineObject;
    }
    if (stop == '=') {
        assignSimplified(first, withoutTrailingBlanks(name));
        assignDisjoint(second, secondHalf(text, name.size()));
        return MiniKDXParser::lineParameter;
    }
    first.clear();
    second.clear();
    const MiniKDXParser::lineType kind = classifyOther(text, name.size());
    if (kind == MiniKDXParser::lineUnrecognised)
        assignDisjoint(first, trimLine(text).substr(0, name.size()));
    return kind;
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
