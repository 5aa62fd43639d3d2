#pragma once

#include <cstddef>
#include <string_view>

#include "parser/LineClassification.h"
#include "parser/LogicalLine.h"

namespace kiv::detail {

/// @throws kiv::data::invalid, with the line in its message.
[[noreturn]] void throwUnknownSyntax(std::string_view line);

/// Reads logical lines and splits them, in storage that serves line after line.
class LogicalLineReader {
public:
    /// Reads the logical line that begins with the physical line at `lineNumber`, which then is the
    /// index of its last one. `line` becomes the logical line; it and its parts are views that live
    /// until the next call.
    /// @return false when there is no such line.
    // Taken into both loops that read all lines, where a call would be a fiftieth of the
    // instructions.
    template <typename Lines>
    [[gnu::always_inline]] bool read(Lines& lines, std::size_t& lineNumber, std::string_view& line,
                                     LineParts& parts) {
        if (!lines.read(lineNumber, line)) return false;
        const std::string_view physicalLine = line;
        if (mayBeContinued(line)) {
            line = logicalLine.join(firstPhysicalLine(line), [&](std::string_view& next) {
                if (!lines.read(lineNumber + 1, next)) return false;
                ++lineNumber;
                return true;
            });
        }
        const bool isJoined = line.data() != physicalLine.data();
        parts = splitter.split(line, isJoined ? shapeOf(line, line.size()) : lines.shapeOf(line));
        return true;
    }

private:
    LogicalLine logicalLine;
    LineSplitter splitter;
};

/// Walks physical lines from the first to the last, joins continued ones, and tells `sink` what
/// they are: newObject(type, name), newParameter(name, value), endObject() and newAction(line).
///
/// The texts are views that live during the call. `lineNumber` is the index of the last physical
/// line read; a sink may change it, and the walk goes on behind it.
///
/// @throws kiv::data::invalid at the first line that is no KDX, and whatever the sink throws.
template <typename Lines, typename Sink>
void walk(Lines lines, Sink& sink, std::size_t& lineNumber) {
    LogicalLineReader reader;
    std::string_view line;
    LineParts parts{};
    for (lineNumber = 0; reader.read(lines, lineNumber, line, parts); ++lineNumber) {
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
