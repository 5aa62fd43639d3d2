#pragma once

#include <optional>
#include <string>

#include "Checker.h"
#include "Source.h"
#include "Work.h"

namespace kdx {

/// Reads a file for a command that can only work with a right text.
/// @return nothing when the text is not right: the outcome then says why.
/// @throws Trouble when the file cannot be read.
std::optional<Source> readChecked(const std::string& file, Demand demand, const Settings& settings,
                                  Outcome& outcome);

}  // namespace kdx
