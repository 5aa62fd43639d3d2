#pragma once

#include <kiv/KDXDocument.h>

#include <string_view>
#include <vector>

namespace kiv::detail {

/// Matches objects against the steps of a path while a text is walked: what matches is a set of
/// positions between steps for each open object, so that a pattern costs its length for each
/// object, whatever it is.
class PathMatcher {
public:
    /// The steps must outlive it.
    explicit PathMatcher(const KDXSteps& givenSteps);

    /// Goes into an object inside the `depth` objects that were entered last and not left.
    void enter(std::size_t depth, std::string_view type, std::string_view name);

    /// Whether the steps match the object that lies inside `depth` others, or, for no step, the top
    /// level; it must have been entered.
    bool matches(std::size_t depth) const { return at(depth, steps.size()); }

    /// Whether they may match something in it.
    bool leadsOn(std::size_t depth) const;

    /// `depth` when each of the objects fulfils the step at its depth, else 0.
    std::size_t stepsOf(std::size_t depth) const {
        return depth <= steps.size() && at(depth, depth) ? depth : 0;
    }

private:
    bool at(std::size_t depth, std::size_t position) const {
        return reached[depth * (steps.size() + 1) + position] != 0;
    }
    void reach(std::size_t depth, std::size_t position);

    const KDXSteps& steps;
    std::vector<char> reached;  // for each depth, whether so many steps are passed
};

}  // namespace kiv::detail
