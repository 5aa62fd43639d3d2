#pragma once

#include <string>
#include <string_view>

namespace kdx {

/// An input of a command, read whole.
struct Source {
    std::string name;    ///< as messages name it
    std::string buffer;  ///< every byte
    bool hasByteOrderMark = false;

    /// The byte order mark that stands in front of the text, or nothing.
    std::string_view byteOrderMark() const;
    /// The bytes behind it.
    std::string_view text() const;
    /// The same as a string; the source is used up.
    std::string takeText() &&;
};

/// What stands for the standard input among file arguments.
constexpr const char* kStandardInput = "-";

/// How messages name an argument.
std::string displayName(const std::string& argument);

/// Reads a file, or the standard input. @throws Trouble when that fails, or for a directory.
Source readSource(const std::string& argument);

}  // namespace kdx
