#pragma once

#include <kiv/StringMapMap.h>

#include "Findings.h"

namespace kdx {

/// Adds to `findings` what of a map KDX text could not carry, so that reading the text would give
/// another map: an error for each object and parameter, whose text begins with its path.
void checkMap(const kiv::StringMapMap& map, Findings& findings);

}  // namespace kdx
