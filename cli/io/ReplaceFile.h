#pragma once

#include <string>
#include <string_view>

namespace kdx {

/// Replaces what a file holds, all at once: whenever the process dies, the file holds the old
/// bytes or the new ones. Mode and owner stay; of a symbolic link, the file that it leads to is
/// replaced.
/// @throws Trouble when that fails; the file is then as it was.
void replaceFile(const std::string& path, std::string_view contents);

}  // namespace kdx
