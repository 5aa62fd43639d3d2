#pragma once

#include <string>
#include <string_view>

namespace kdx {

/// Appends a unified diff of two texts of which each line of one became the line at the same place
/// of the other, as it is when a text is indented: in linear time, also where every line differs,
/// which no general search for the shortest diff can promise.
void appendUnifiedDiff(std::string& out, std::string_view name, std::string_view before,
                       std::string_view after, bool color);

}  // namespace kdx
