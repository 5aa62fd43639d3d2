#pragma once

#include <kiv/StringMapMap.h>

#include <string_view>

#include "messages/Findings.h"

namespace kdx {

/// Adds a warning for each object of a text whose path is in the map and reads back as that of
/// another one, because its name holds a '/'.
void checkSlashes(std::string_view text, const kiv::StringMapMap& map, Findings& findings);

/// Adds a warning for each path of a map in which a '/' may belong to a name: behind a name, and
/// without an object around it in the map, as every object of a text has.
void checkSlashes(const kiv::StringMapMap& map, Findings& findings);

}  // namespace kdx
