#pragma once

#include <string_view>

namespace kdx {

/// Whether a pattern matches all of a name or a path. In the pattern `?` stands for one character,
/// `*` for any number of them, `[a-z_]` for one of a set and `[!a-z_]` for one outside of it, none
/// of them for a '/'; `**` stands for any number of characters, a '/' included. A set that is
/// never closed is no set. Characters are those of UTF-8, in a set those of ASCII.
bool matchesGlob(std::string_view text, std::string_view pattern);

}  // namespace kdx
