#pragma once

#include <kiv/KDXText.h>

#include <string>
#include <vector>

namespace kiv::detail {

/// Makes edits, which are in order and do not overlap, in the memory of the text where it suffices.
/// Takes time in proportion to the text, however many edits there are.
void splice(std::string& text, const std::vector<KDXTextEdit>& edits);

}  // namespace kiv::detail
