#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "Settings.h"
#include "Status.h"

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

/// The files that a command is to work on.
struct FileList {
    std::vector<std::string> files;
    std::string diagnostics;  ///< about arguments that could not be followed
    Status status = Status::fine;
};

/// Makes file arguments a list of files: none is the standard input, a directory the files in it
/// and below it whose names end in ".kdx", by name.
/// @throws Trouble when the standard input is named twice.
FileList listFiles(const std::vector<std::string>& arguments, const Settings& settings);

}  // namespace kdx
