#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace kdx {

/// Whether a byte of UTF-8 text is not the first of its character.
bool continuesCharacter(char c);

/// Moves a cut off the middle of a UTF-8 character, to its begin.
std::size_t characterBegin(std::string_view text, std::size_t offset);

/// The text up to a number of characters of UTF-8.
std::string_view firstColumns(std::string_view text, std::size_t columns);

/// Text from a file, fit for a message on a terminal: control characters made visible, a long text
/// cut.
std::string shown(std::string_view text);

/// The same for a name, which may be empty.
std::string shownName(std::string_view name);

/// "'c'", "a tab", "the byte 0xC3".
std::string describedByte(char c);

/// "1 file", "2 files".
std::string counted(std::size_t count, std::string_view noun);

}  // namespace kdx
