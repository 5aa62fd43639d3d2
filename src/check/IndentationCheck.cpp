#include "check/IndentationCheck.h"

namespace kiv::detail {

std::optional<KDXPlace> IndentationCheck::closedAbove(std::string_view indentation) const {
    if (levels.empty()) return std::nullopt;
    const Level& level = levels.back();
    const bool under = isLessDeep(level.object.indentation, indentation) &&
                       isAsDeep(indentation, level.closedIndentation);
    return under ? std::optional(level.closed) : std::nullopt;
}

void IndentationCheck::open(const OpenObject& object) {
    parameter(object.indentation);
    levels.push_back({object, false, {}, {}});
}

void IndentationCheck::close(std::string_view indentation) {
    if (levels.empty()) return;
    const OpenObject closed = levels.back().object;
    levels.pop_back();
    if (levels.empty()) return;
    const bool aligned = isAsDeep(indentation, closed.indentation);
    levels.back().closedIndentation = aligned ? indentation : std::string_view();
    levels.back().closed = closed.begin;
}

}  // namespace kiv::detail
