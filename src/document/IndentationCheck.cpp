#include "document/IndentationCheck.h"

#include "base/Blank.h"

namespace kiv::detail {
namespace {

bool isKnown(std::string_view indentation) {
    return indentation.data() != nullptr;
}

/// Whether a line certainly stands less deep than another: the other begins with its blanks.
bool isLess(std::string_view indentation, std::string_view other) {
    return isKnown(indentation) && indentation.size() < other.size() &&
           other.substr(0, indentation.size()) == indentation;
}

bool isSame(std::string_view indentation, std::string_view other) {
    return isKnown(indentation) && isKnown(other) && indentation == other;
}

}  // namespace

const OpenObject* IndentationCheck::contradicted(std::string_view indentation, bool isEnd) const {
    if (levels.empty()) return nullptr;
    const Level& level = levels.back();
    if (isLess(indentation, level.object.indentation)) return &level.object;
    const bool besides =
        !isEnd && level.hasDeeperContent && isSame(indentation, level.object.indentation);
    return besides ? &level.object : nullptr;
}

std::optional<KDXPlace> IndentationCheck::closedAbove(std::string_view indentation) const {
    if (levels.empty()) return std::nullopt;
    const Level& level = levels.back();
    const bool under = isLess(level.object.indentation, indentation) &&
                       isSame(indentation, level.closedIndentation);
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
    const bool aligned = isSame(indentation, closed.indentation);
    levels.back().closedIndentation = aligned ? indentation : std::string_view();
    levels.back().closed = closed.begin;
}

void IndentationCheck::parameter(std::string_view indentation) {
    if (levels.empty()) return;
    Level& level = levels.back();
    if (isLess(level.object.indentation, indentation)) level.hasDeeperContent = true;
}

}  // namespace kiv::detail
