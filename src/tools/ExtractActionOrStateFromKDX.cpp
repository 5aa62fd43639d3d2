#include <kiv/ExtractActionOrStateFromKDX.h>

#include <string_view>

#include "parser/LineTrimming.h"
#include "parser/LogicalLine.h"
#include "parser/PhysicalLines.h"

namespace kiv::ExtractActionOrStateFromKDX {

std::vector<std::pair<KDXLineType, std::string>> extractActionOrStateFromKDX(
    const std::string& text) {
    std::vector<std::pair<KDXLineType, std::string>> runs;
    detail::TextLines lines(text);
    detail::LogicalLine logicalLine;
    const auto next = [&lines](std::string_view& line) { return lines.next(line); };
    std::string_view line;
    while (next(line)) {
        // Unlike the parser, this looks at a line's very last byte only: a backslash that blanks
        // follow does not continue it.
        const std::string_view trimmed = detail::trimLine(logicalLine.join(line, next));
        if (trimmed.empty()) continue;
        const KDXLineType kind = trimmed.front() == '>' ? Action : State;
        if (runs.empty() || runs.back().first != kind) {
            runs.emplace_back(kind, trimmed);
        } else {
            runs.back().second.append("\n").append(trimmed);
        }
    }
    return runs;
}

}  // namespace kiv::ExtractActionOrStateFromKDX
