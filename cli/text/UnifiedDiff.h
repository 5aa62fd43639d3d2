#pragma once

#include <kiv/KDXText.h>

#include <string>
#include <string_view>
#include <vector>

namespace kdx {

/// Appends a unified diff of two texts of which each line of one became a line of the other, blank
/// lines aside that are gone, as it is when a text is laid out: in linear time, also where every
/// line differs, which no general search for the shortest diff can promise.
void appendUnifiedDiff(std::string& out, std::string_view name, std::string_view before,
                       std::string_view after, bool color);

/// Appends a unified diff of what edits do to a text. Each replaces whole lines.
void appendUnifiedDiff(std::string& out, std::string_view name, std::string_view before,
                       const std::vector<kiv::KDXTextEdit>& edits, bool color);

}  // namespace kdx
