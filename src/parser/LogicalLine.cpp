#include "parser/LogicalLine.h"

namespace kiv::detail {

std::string_view firstPhysicalLine(std::string_view line) {
    const std::string_view trimmed = withoutTrailingBlanks(line);
    if (!isContinued(trimmed)) return line;
    if (line.find("\\ ") == std::string_view::npos) return line;
    return withoutLeadingBlanks(trimmed);
}

}  // namespace kiv::detail
