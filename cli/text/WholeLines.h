#pragma once

#include <kiv/KDXText.h>

#include <string_view>
#include <vector>

namespace kdx {

/// Edits that do to a text what the given ones do, each of which replaces whole lines:
/// one for lines that stand together.
std::vector<kiv::KDXTextEdit> wholeLineEdits(std::string_view text,
                                             const std::vector<kiv::KDXTextEdit>& edits);

}  // namespace kdx
