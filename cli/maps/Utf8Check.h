#pragma once

#include <kiv/StringMapMap.h>

#include <string_view>

#include "messages/Findings.h"

namespace kdx {

/// Adds to `findings` what stands in the map of a text and is no UTF-8, which JSON cannot hold.
/// Every END of the text has to close an object.
void checkUtf8(std::string_view text, const kiv::StringMapMap& map, Findings& findings);

}  // namespace kdx
