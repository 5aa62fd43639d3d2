#pragma once

#include <cstddef>
#include <vector>

#include "Findings.h"
#include "Settings.h"
#include "Source.h"

namespace kdx {

/// How much of a text has to be right.
enum class Demand {
    lines,      ///< every line is KDX, and objects are not nested too deep
    structure,  ///< also, every END has an object, every parameter too
    style,      ///< also, nothing in it looks like a mistake: the warnings
};

/// What there is to say about a text.
struct Report {
    Findings findings;  ///< their places refer to the text
    /// Offsets, some way apart, at which the text can be cut into parts that mean by themselves
    /// what they mean in the text: a line begins there, and no object is open.
    std::vector<std::size_t> seams;
};

/// Finds all problems of a text, in time proportional to it, and keeps `maxProblems` of each kind.
Report check(const Source& source, Demand demand, const Settings& settings,
             std::size_t maxProblems);

}  // namespace kdx
