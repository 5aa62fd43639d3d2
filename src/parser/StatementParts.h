#pragma once

#include <string>
#include <string_view>

#include "parser/PhysicalLines.h"
#include "parser/Walk.h"

namespace kiv::detail {

/// The halves of a statement, as KDXReader has them.
struct Halves {
    std::string_view first;
    std::string_view second;
};

/// Splits statements that were read before, one after another, in storage that serves again.
class StatementSplitter {
public:
    /// The halves of a statement, given its bytes: views of the splitter, until the next call.
    Halves split(std::string_view bytes) {
        copy = bytes;  // what stands behind it may be another statement's
        TextLines lines(copy);
        LineParts parts{};
        std::string_view line;
        std::size_t lineNumber = 0;
        logicalLines.read(lines, lineNumber, line, parts);
        return {parts.first, parts.second};
    }

private:
    LogicalLineReader logicalLines;
    std::string copy;
};

}  // namespace kiv::detail
