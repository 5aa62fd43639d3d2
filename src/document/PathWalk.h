#pragma once

#include <kiv/KDXDocument.h>

#include <vector>

#include "document/PathMatcher.h"
#include "document/StatementTree.h"

namespace kiv::detail {

/// Walks a document along a path in text order. What the path leads past is left out.
class PathWalk {
public:
    /// What a walk comes by.
    struct Step {
        Index index;
        std::size_t depth;  // how many objects are around the statement
        bool isMatched;     // the object itself, or what is around another statement
        std::size_t steps;  // of an object: its depth and one, where it and those around it
                            // fulfil as many steps; else 0
    };

    PathWalk(const StatementTree& walkedTree, const KDXSteps& path)
        : tree(walkedTree), matcher(path) {}

    /// Shows each object, and each statement directly in one that is matched, to `visit`, which
    /// says whether the walk goes on: `bool(const Step&)`.
    template <typename Visit>
    void run(Visit visit) {
        Index index = tree.at(kRoot).first;
        while (index != kNone) {
            while (open.back() != tree.at(index).parent) open.pop_back();
            const std::size_t depth = open.size() - 1;
            if (!tree.isObject(index)) {
                if (!visit({index, depth, matcher.matches(depth), 0})) return;
                index = tree.nextInText(index);
                continue;
            }
            const Halves object = tree.halvesOf(index, splitter);
            matcher.enter(depth, object.first, object.second);
            const bool isMatched = matcher.matches(depth + 1);
            if (!visit({index, depth, isMatched, matcher.stepsOf(depth + 1)})) return;
            open.push_back(index);
            const bool isNeeded = isMatched || matcher.leadsOn(depth + 1);
            index = isNeeded ? tree.nextInText(index) : tree.nextBehind(index);
        }
    }

private:
    const StatementTree& tree;
    StatementSplitter splitter;
    PathMatcher matcher;
    std::vector<Index> open{kRoot};
};

/// Whether a statement is a parameter of this name.
inline bool isParameter(const StatementTree& tree, Index index, std::string_view name) {
    if (tree.kindOf(index) != MiniKDXParser::lineParameter) return false;
    StatementSplitter splitter;
    return tree.halvesOf(index, splitter).first == name;
}

}  // namespace kiv::detail
