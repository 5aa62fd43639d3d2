#pragma once

#include <cstddef>
#include <string_view>

#include "parser/LineClassification.h"
#include "parser/LogicalLine.h"

namespace kiv::detail {

/// @throws kiv::data::invalid, with the line in its message.
[[noreturn]] void throwUnknownSyntax(std::string_view line);

/// Whether the line behind this one may belong to it; false for nearly all lines.
inline bool mayBeContinued(std::string_view line) {
    return !line.empty() && (line.back() == '\\' || isBlank(line.back()));
}

/// The first physical line of a logical line. A backslash that only blanks follow is made its last
/// byte, so that the line is continued, provided that a backslash and a space stand side by side
/// somewhere in it: a backslash and a carriage return alone continue nothing.
std::string_view firstPhysicalLine(std::string_view line);

/// Walks physical lines from the first to the last, joins continued ones, and tells `sink` what
/// they are: newObject(type, name), newParameter(name, value), endObject() and newAction(line).
///
/// The texts are views that live during the call. `lineNumber` is the index of the last physical
/// line read; a sink may change it, and the walk goes on behind it.
///
/// @throws kiv::data::invalid at the first line that is no KDX, and whatever the sink throws.
template <typename Lines, typename Sink>
void walk(Lines lines, Sink& sink, std::size_t& lineNumber) {
    LogicalLine logicalLine;
    LineSplitter splitter;
    const auto next = [&lines, &lineNumber](std::string_view& line) {
        if (!lines.read(lineNumber + 1, line)) return false;
        ++lineNumber;
        return true;
    };
    std::string_view line;
    for (lineNumber = 0; lines.read(lineNumber, line); ++lineNumber) {
        std::size_t readable = lines.readable(line);
        if (mayBeContinued(line)) {
            line = logicalLine.join(firstPhysicalLine(line), next);
            readable = line.size();
        }
        const LineParts parts = splitter.split(line, readable);
        switch (parts.kind) {
            case MiniKDXParser::lineObject: sink.newObject(parts.first, parts.second); break;
            case MiniKDXParser::lineParameter: sink.newParameter(parts.first, parts.second); break;
            case MiniKDXParser::lineEnd: sink.endObject(); break;
            case MiniKDXParser::lineAction: sink.newAction(line); break;
            case MiniKDXParser::lineVerbatim:
            case MiniKDXParser::lineBlank: break;
            case MiniKDXParser::lineUnrecognised: throwUnknownSyntax(line);
        }
    }
}

}  // namespace kiv::detail
