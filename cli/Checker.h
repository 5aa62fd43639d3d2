#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "Diagnostics.h"
#include "Settings.h"
#include "Source.h"

namespace kdx {

/// How much of a text has to be right.
enum class Demand {
    lines,      ///< every line is KDX, and objects are not nested too deep
    structure,  ///< also, every END has an object, every parameter too
    style,      ///< also, nothing in it looks like a mistake: the warnings
};

/// What is wrong with a text, line by line.
struct Findings {
    std::vector<Problem> problems;  ///< their places refer to the text
    std::size_t errors = 0;         ///< all of them, also those that are not in `problems`
    std::size_t warnings = 0;
};

/// Finds all problems of a text, in time proportional to it. Keeps at most `maxProblems` errors
/// and as many warnings; 0 is no limit.
Findings check(const Source& source, Demand demand, const Settings& settings,
               std::size_t maxProblems);

/// Appends the problems to `out`, and how many were left out.
void appendFindings(std::string& out, std::string_view file, const Findings& findings,
                    const Settings& settings);

constexpr std::size_t kDefaultMaxErrors = 100;

}  // namespace kdx
