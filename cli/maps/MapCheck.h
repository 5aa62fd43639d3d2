#pragma once

#include <kiv/StringMapMap.h>

#include "messages/Findings.h"

namespace kdx {

/// Makes the values of a map such that reading the text written of it gives the map as it was: puts
/// a comment behind those that end in a backslash. Adds to `findings` what cannot be carried, an
/// error for each object and parameter, whose text begins with its path.
void makeCarried(kiv::StringMapMap& map, Findings& findings);

}  // namespace kdx
