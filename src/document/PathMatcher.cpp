#include "document/PathMatcher.h"

#include "base/PathText.h"

namespace kiv {
namespace detail {
namespace {

bool isStep(const KDXStep& step, std::string_view type, std::string_view name) {
    if (step.type && *step.type != type) return false;
    return !step.name || nameOrType(type, *step.name) == nameOrType(type, name);
}

}  // namespace

PathMatcher::PathMatcher(const KDXSteps& givenSteps)
    : steps(givenSteps), reached(givenSteps.size() + 1) {
    reach(0, 0);
}

void PathMatcher::enter(std::size_t depth, std::string_view type, std::string_view name) {
    const std::size_t width = steps.size() + 1;
    reached.resize((depth + 1) * width);
    reached.resize((depth + 2) * width);
    for (std::size_t i = 0; i < steps.size(); ++i) {
        if (!at(depth, i)) continue;
        if (steps[i].anyDepth) reach(depth + 1, i);
        if (!steps[i].anyDepth && isStep(steps[i], type, name)) reach(depth + 1, i + 1);
    }
}

bool PathMatcher::leadsOn(std::size_t depth) const {
    for (std::size_t i = 0; i < steps.size(); ++i)
        if (at(depth, i)) return true;
    return false;
}

void PathMatcher::reach(std::size_t depth, std::size_t position) {
    char* const positions = reached.data() + depth * (steps.size() + 1);
    positions[position] = 1;
    // Any number of levels may be none.
    while (position < steps.size() && steps[position].anyDepth) positions[++position] = 1;
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
