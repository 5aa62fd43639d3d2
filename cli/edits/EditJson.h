#pragma once

#include <string_view>
#include <vector>

#include "Edit.h"

namespace kdx {

/// Reads a list of edits, one JSON object a line:
///
///     {"set": PATH, "name": TEXT, "value": TEXT}     and "first": true, "before" or "after": TEXT
///     {"unset": PATH}                                and "name": TEXT
///     {"rename": PATH, "to": TEXT}                   and "name": TEXT; "type": TEXT
///     {"move": PATH, "into": PATH}                   and "name": TEXT, "first": true;
///                                                    or "before" or "after" in place of "into"
///
/// A PATH is a text, as in kdx map, or a list of pairs [TYPE, NAME], which can say every path.
/// @throws Trouble that names the line for anything else.
std::vector<Edit> readEdits(std::string_view text);

}  // namespace kdx
