#pragma once

#include <cstddef>
#include <optional>
#include <string>

namespace kdx {

/// The width of a level that the .editorconfig files in and above a file's folder ask for, in
/// blanks; nothing when they do not, or when the program was built without support for them. The
/// file need not exist.
/// @throws Trouble when such a file has a line that is no setting.
std::optional<std::size_t> configuredIndent(const std::string& path);

}  // namespace kdx
