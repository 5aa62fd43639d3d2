#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "Findings.h"
#include "Source.h"
#include "Work.h"

namespace kdx {

/// How much of a text has to be right.
enum class Demand {
    lines,      ///< every line is KDX, and objects are not nested too deep
    structure,  ///< also, every END has an object, every parameter too
};

/// A right text.
struct CheckedSource : Source {
    /// Offsets at which the text can be cut into parts that mean by themselves what they mean in
    /// the text. There may be none.
    std::vector<std::size_t> seams;
};

/// Reads a file for a command that can only work with a right text.
/// @return nothing when the text is not right: the outcome then says why.
/// @throws Trouble when the file cannot be read.
std::optional<CheckedSource> readChecked(const std::string& file, Demand demand,
                                         const Settings& settings, Outcome& outcome);

}  // namespace kdx
