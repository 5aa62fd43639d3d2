#pragma once

#include <kiv/KDXDocument.h>

#include <string_view>
#include <vector>

namespace kiv::detail {

/// Matches objects against the steps of a path while a text is walked: what matches is a set of
/// positions between steps for each open object, so that a pattern costs its length for each
/// object at most, and a path without `**` the same whatever its length.
class PathMatcher {
public:
    /// The steps must outlive it.
    explicit PathMatcher(const KDXSteps& givenSteps);

    /// Goes into an object inside the `depth` objects that were entered last and not left.
    void enter(std::size_t depth, std::string_view type, std::string_view name);

    /// Whether the steps match the object that lies inside `depth` others, or, for no step, the top
    /// level; it must have been entered.
    bool matches(std::size_t depth) const { return isReached(depth, steps.size()); }

    /// Whether they may match something in it.
    bool leadsOn(std::size_t depth) const;

    /// `depth` when each of the objects fulfils the step at its depth, else 0.
    std::size_t stepsOf(std::size_t depth) const { return isReached(depth, depth) ? depth : 0; }

private:
    std::size_t beginOf(std::size_t depth) const { return depth == 0 ? 0 : ends[depth - 1]; }
    bool isReached(std::size_t depth, std::size_t position) const;
    void reach(std::size_t begin, std::size_t position);

    const KDXSteps& steps;
    std::vector<std::size_t> reached;  // how many steps may be passed, ascending for each depth
    std::vector<std::size_t> ends;     // where those of each depth end
};

}  // namespace kiv::detail
