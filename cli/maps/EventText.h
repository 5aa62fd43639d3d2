#pragma once

#include <string>
#include <string_view>

#include "io/Source.h"

namespace kdx {

/// Prints a JSON object a line for each statement of a text, right or wrong, and one for a byte
/// order mark: what it is, where it stands, its parts, and under "source" its bytes. Where those
/// are no UTF-8, they stand in hexadecimal digits under "sourceHex" instead, and the parts have
/// replacement characters.
void printEvents(const Source& source);

/// The text whose statements printEvents() printed, byte for byte: what "source" and "sourceHex"
/// say, one behind the other; nothing else counts.
/// @throws Trouble for a line that is no JSON, or says neither.
std::string readEvents(std::string_view lines);

}  // namespace kdx
