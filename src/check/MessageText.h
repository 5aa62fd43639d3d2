#pragma once

#include <kiv/KDXText.h>

#include <cstddef>
#include <string>
#include <string_view>

#include "check/NamesSeen.h"

namespace kiv::detail {

/// The length of the UTF-8 character at the front of a text that is not empty; 1 when there is
/// none.
std::size_t characterLength(std::string_view text);

/// The character at the front of a text that is not empty: "'c'", "a tab", "the character U+202E",
/// "the byte 0xC3".
std::string describedCharacter(std::string_view text);

/// "object 'Sample: s1'".
std::string describedObject(const SeenName& name);

/// "of line 3".
std::string ofLine(const KDXPlace& place);

}  // namespace kiv::detail
