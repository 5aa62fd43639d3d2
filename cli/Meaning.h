#pragma once

#include <string_view>

namespace kdx {

/// Whether two texts say the same, line by line: the same objects, parameters, ENDs, actions and
/// verbatim lines in the same order. Comments, blank lines, indentation and continuations do not
/// matter.
bool sameMeaning(std::string_view before, std::string_view after);

}  // namespace kdx
