#include "parser/LineClassification.h"

#include <utility>

#include "base/Blank.h"
#include "base/Whitespace.h"
#include "parser/LineTrimming.h"

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

LineType classifyOther(std::string_view text, std::size_t nameLength) {
    if (isPlainEnd(text, nameLength)) return MiniKDXParser::lineEnd;
    // The comment begins behind the name characters at the earliest.
    const std::string_view trimmed = trimLine(text, nameLength);
    if (trimmed.empty()) return MiniKDXParser::lineBlank;
    if (trimmed.front() == '!' || trimmed.front() == '$') return MiniKDXParser::lineVerbatim;
    if (trimmed.front() == '>') return MiniKDXParser::lineAction;
    if (trimmed == "END") return MiniKDXParser::lineEnd;
    return MiniKDXParser::lineUnrecognised;
}

LineParts LineSplitter::splitBehindBlanks(std::string_view line) {
    const std::string_view text = withoutLeadingBlanks(line);
    LineParts parts = splitShaped(text, shapeByBytes(text));
    parts.hash += line.size() - text.size();
    return parts;
}

LineParts LineSplitter::splitOther(std::string_view text, std::size_t nameLength,
                                   std::size_t hash) {
    const LineType kind = classifyOther(text, nameLength);
    if (kind != MiniKDXParser::lineUnrecognised) return {kind, {}, {}, hash};
    return {kind, trimLine(text).substr(0, nameLength), {}, hash};
}

}  // namespace detail

MiniKDXParser::lineType MiniKDXParser::determineLineType(const std::string& line,
                                                         std::string& first, std::string& second) {
    detail::LineSplitter splitter;
    const detail::LineParts parts = splitter.split(line, detail::shapeOf(line, line.size()));
    // The halves are views of the line, which the caller may use as one of the outputs.
    std::string secondHalf(parts.second);
    first = std::string(parts.first);
    second = std::move(secondHalf);
    return parts.kind;
}

MiniKDXParser::lineType MiniKDXParser::determineLineType(const std::string& line) {
    return detail::classifyText(detail::withoutIndentation(line));
}

}  // namespace kiv
