#pragma once

#include <kiv/MiniKDXParser.h>

#include <cstddef>
#include <string>
#include <string_view>

namespace kiv::detail {

/// Finds out what a logical line is while its physical lines come in one by one, without their
/// comments. A physical line costs time in proportion to its own length only, however many came
/// before it.
class UndecidedLine {
public:
    /// What is known of the logical line with one more physical line.
    struct Outcome {
        MiniKDXParser::lineType kind;  ///< lineUnrecognised while it is open
        bool continued;                ///< whether the physical line ends in a backslash
    };

    /// Adds a physical line without leading blanks, behind a blank if `spaced`.
    Outcome add(std::string_view line, bool spaced);

    /// Begins a new logical line.
    void clear();

private:
    Outcome addFirst(std::string_view line);
    bool dropFinalBackslash();

    std::string text;
    std::size_t nameLength = 0;  // so many name characters stand at the beginning of the text
};

}  // namespace kiv::detail
