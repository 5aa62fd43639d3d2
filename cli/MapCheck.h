#pragma once

#include <kiv/StringMapMap.h>

#include <string>
#include <vector>

namespace kdx {

/// What of a map KDX text could not carry, so that reading the text would give another map: a
/// message for each object and parameter, which begins with its path. At most `limit` of them.
std::vector<std::string> findUncarriable(const kiv::StringMapMap& map, std::size_t limit);

}  // namespace kdx
