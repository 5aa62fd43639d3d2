#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "FileState.h"

namespace kdx {

/// An input of a command, read whole.
struct Source {
    std::string name;    ///< as messages name it
    std::string buffer;  ///< every byte
    bool hasByteOrderMark = false;
    FileState state;  ///< of the file when it was opened; nothing for the standard input

    /// The byte order mark that stands in front of the text, or nothing.
    std::string_view byteOrderMark() const;
    /// The bytes behind it.
    std::string_view text() const;
    /// The same as a string; the source is used up.
    std::string takeText() &&;
};

/// Bytes in several places, one behind the other.
using Pieces = std::vector<std::string_view>;

/// What stands for the standard input among file arguments.
constexpr const char* kStandardInput = "-";

/// How messages name an argument. Names of files are UTF-8 on Windows, where the program's manifest
/// makes it the code page, and whatever bytes they have elsewhere.
std::string displayName(const std::string& argument);

/// Reads a file, or the standard input. @throws Trouble when that fails, or for a directory.
Source readSource(const std::string& argument);

/// Whether a file is the one that was read, in the state in which it was read, and holds the same
/// bytes. Reads it again. @throws Trouble when that fails.
bool isAsRead(const std::string& path, const Source& read);

/// Whether a file holds these bytes and no others. @throws Trouble when it cannot be read.
bool holds(const std::string& path, const Pieces& bytes);

}  // namespace kdx
