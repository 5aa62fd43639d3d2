#pragma once

#include <optional>
#include <string>
#include <vector>

#include "Checker.h"
#include "Source.h"
#include "Work.h"

namespace kdx {

/// A right text, and the seams of its Report.
struct CheckedSource : Source {
    std::vector<std::size_t> seams;
};

/// Reads a file for a command that can only work with a right text.
/// @return nothing when the text is not right: the outcome then says why.
/// @throws Trouble when the file cannot be read.
std::optional<CheckedSource> readChecked(const std::string& file, Demand demand,
                                         const Settings& settings, Outcome& outcome);

}  // namespace kdx
