#pragma once

#include <optional>
#include <string>

#include "Work.h"
#include "io/Source.h"
#include "messages/Findings.h"

namespace kdx {

/// How much of a text has to be right.
enum class Demand {
    lines,      ///< every line is KDX
    nesting,    ///< also, objects are not nested too deep
    structure,  ///< also, every END has an object, every parameter too
};

/// Reads a file for a command that can only work with a right text.
/// @return the source, whose text is right; nothing when the text is not right: the outcome then
/// says why.
/// @throws Trouble when the file cannot be read.
std::optional<Source> readChecked(const std::string& file, Demand demand, const Settings& settings,
                                  Outcome& outcome);

}  // namespace kdx
