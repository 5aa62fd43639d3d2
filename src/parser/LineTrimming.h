#pragma once

#include <string_view>

namespace kiv::detail {

/// The part of a line that carries meaning, as a view of it: without leading blanks and, unless it
/// then begins with '!', without its comment and trailing blanks.
///
/// The comment begins at the first '#' of the line. When a backslash stands right before that '#',
/// the line has no comment, whatever follows.
std::string_view trimLine(std::string_view line);

}  // namespace kiv::detail
