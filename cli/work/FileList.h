#pragma once

#include <string>
#include <vector>

#include "base/Settings.h"
#include "base/Status.h"

namespace kdx {

/// The files that a command is to work on.
struct FileList {
    std::vector<std::string> files;
    std::string diagnostics;  ///< about arguments that could not be followed
    Status status = Status::fine;
};

/// Makes file arguments a list of files: none is the standard input, a directory the files in it
/// and below it whose names end in ".kdx", by name. Below a directory, what is hidden and what the
/// settings exclude is left out, and no link is followed.
/// @throws Trouble when the standard input is named twice.
FileList listFiles(const std::vector<std::string>& arguments, const Settings& settings);

/// Leaves out each file that stands in the list before, also by a link or a hard link: a change
/// would be made in it twice.
void leaveOutRepeated(std::vector<std::string>& files);

}  // namespace kdx
