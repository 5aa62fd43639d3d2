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
    /// Adds a physical line without leading blanks, behind a blank if `spaced`. It must be the end
    /// of a std::string.
    /// @return the kind of the logical line, lineUnrecognised while it is open.
    MiniKDXParser::lineType add(std::string_view line, bool spaced) {
        return text.empty() ? addFirst(line) : addFurther(line, spaced);
    }

    /// Whether the physical line added last ends in a backslash.
    bool isContinued() const { return continued; }

    /// Begins a new logical line.
    void clear() {
        text.clear();
        nameLength = 0;
    }

private:
    MiniKDXParser::lineType addFirst(std::string_view line) {
        const auto kind = classifyText(line);
        continued = line.find('\\') != std::string_view::npos;
        if (continued) keepContinued(line, kind);  // hardly ever
        return kind;
    }

    void keepContinued(std::string_view line, MiniKDXParser::lineType kind);
    MiniKDXParser::lineType addFurther(std::string_view line, bool spaced);
    void dropFinalBackslash();

    std::string text;
    std::size_t nameLength = 0;  // so many name characters stand at the beginning of the text
    bool continued = false;
};

}  // namespace kiv::detail
