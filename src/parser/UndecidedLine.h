#pragma once

#include <kiv/MiniKDXParser.h>

#include <cstddef>
#include <string>
#include <string_view>

#include "parser/LineClassification.h"

namespace kiv::detail {

/// Finds out what a logical line is while its physical lines come in one by one, without their
/// comments. A physical line costs time in proportion to its own length only, however many came
/// before it.
class UndecidedLine {
public:
    // Every physical line is without leading blanks, and the end of a std::string.

    /// Begins with a physical line, of which the first `knownLength` bytes are name characters.
    /// @return the kind of the logical line, lineUnrecognised while it is open.
    MiniKDXParser::lineType begin(std::string_view line, std::size_t knownLength,
                                  bool hasBackslash) {
        const auto kind = classifyText(line, knownLength);
        continued = hasBackslash;
        if (continued) keepContinued(line, kind);  // hardly ever
        return kind;
    }

    /// Continues with a physical line, behind a blank if `spaced`.
    /// @return the kind of the logical line, lineUnrecognised while it is open.
    MiniKDXParser::lineType add(std::string_view line, bool spaced);

    /// Whether the physical line added last ends in a backslash.
    bool isContinued() const { return continued; }

    /// Begins a new logical line.
    void clear() {
        text.clear();
        nameLength = 0;
    }

private:
    void keepContinued(std::string_view line, MiniKDXParser::lineType kind);
    void dropFinalBackslash();

    std::string text;
    std::size_t nameLength = 0;  // so many name characters stand at the beginning of the text
    bool continued = false;
};

}  // namespace kiv::detail
