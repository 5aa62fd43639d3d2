#include "document/PathMatcher.h"

#include <algorithm>
#include <cstddef>

#include "base/PathText.h"

namespace kiv {
namespace detail {
namespace {

bool isStep(const KDXStep& step, std::string_view type, std::string_view name) {
    if (step.type && *step.type != type) return false;
    return !step.name || nameOrType(type, *step.name) == nameOrType(type, name);
}

}  // namespace

PathMatcher::PathMatcher(const KDXSteps& givenSteps) : steps(givenSteps) {
    reach(0, 0);
    ends.push_back(reached.size());
}

void PathMatcher::enter(std::size_t depth, std::string_view type, std::string_view name) {
    ends.resize(depth + 1);
    const std::size_t end = ends.back();
    reached.resize(end);
    for (std::size_t i = beginOf(depth); i < end; ++i) {
        const std::size_t position = reached[i];
        if (position == steps.size()) break;
        const KDXStep& step = steps[position];
        if (step.anyDepth) reach(end, position);
        if (!step.anyDepth && isStep(step, type, name)) reach(end, position + 1);
    }
    ends.push_back(reached.size());
}

bool PathMatcher::leadsOn(std::size_t depth) const {
    return beginOf(depth) < ends[depth] && reached[beginOf(depth)] < steps.size();
}

bool PathMatcher::isReached(std::size_t depth, std::size_t position) const {
    const auto at = [&](std::size_t index) {
        return reached.begin() + static_cast<std::ptrdiff_t>(index);
    };
    return std::binary_search(at(beginOf(depth)), at(ends[depth]), position);
}

/// Adds to the positions from `begin` on. Called for ascending positions, whose runs of steps for
/// any depth are without gaps: what is not behind the last one is there.
void PathMatcher::reach(std::size_t begin, std::size_t position) {
    const auto add = [&] {
        if (reached.size() == begin || reached.back() < position) reached.push_back(position);
    };
    add();
    // Any number of levels may be none.
    for (; position < steps.size() && steps[position].anyDepth; add()) ++position;
}

}  // namespace detail

KDXSteps readPath(std::string_view path) {
    const auto wild = [](std::string_view text) {
        return text == "*" ? std::nullopt : std::make_optional(std::string(text));
    };
    KDXSteps steps;
    for (detail::PathCursor cursor(path); !cursor.atEnd();) {
        const detail::PathComponent component = cursor.next();
        const bool alone = component.name.data() == component.type.data();  // without a name
        if (alone && component.type == "**") {
            steps.push_back({std::nullopt, std::nullopt, true});
        } else if (component.name == "**") {
            steps.push_back({wild(component.type), std::nullopt, false});
            steps.push_back({std::nullopt, std::nullopt, true});
        } else {
            steps.push_back({wild(component.type), wild(component.name), false});
        }
    }
    return steps;
}

void appendLevel(std::string& path, std::string_view type, std::string_view name) {
    detail::putComponent(path, path.size(), type, name);
}

}  // namespace kiv
