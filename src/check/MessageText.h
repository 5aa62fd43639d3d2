#pragma once

#include <kiv/KDXText.h>

#include <string>
#include <string_view>

#include "check/NamesSeen.h"

namespace kiv::detail {

/// "'c'", "a tab", "the byte 0xC3".
std::string describedByte(char c);

/// "object 'Sample: s1'".
std::string describedObject(const SeenName& name);

/// "of line 3".
std::string ofLine(const KDXPlace& place);

}  // namespace kiv::detail
