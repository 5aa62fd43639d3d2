#pragma once

#include <functional>
#include <string>
#include <vector>

#include "FileList.h"
#include "base/Settings.h"
#include "base/Status.h"

namespace kdx {

/// What the work on one file has to say.
struct Outcome {
    std::string results;      ///< for the standard output
    std::string diagnostics;  ///< for the standard error stream
    Status status = Status::fine;

    /// Adds to the status, which never gets better.
    void raise(Status other) { status = worse(status, other); }
};

/// Works on one file; `index` is its place in the list. May be called on several threads at once.
/// Trouble that it throws becomes a diagnostic about this file.
using Work = std::function<Outcome(const std::string& file, std::size_t index)>;

/// Takes the file's result further, one file after the other, in their order, on whatever thread.
using Then = std::function<void(std::size_t index)>;

/// Works on all files, several at a time, and writes what each has to say in the order of the
/// files. Shows a progress line on a terminal when it takes long.
/// @return the worst status of all. @throws Trouble when the output cannot be written.
Status workOnFiles(const FileList& list, const Settings& settings, const Work& work,
                   const Then& then = {});

/// The same for file arguments, as listFiles() takes them.
Status workOnArguments(const std::vector<std::string>& arguments, const Settings& settings,
                       const Work& work);

/// The same for one file, or the standard input.
Status workOnFile(const std::string& file, const Settings& settings, const Work& work);

}  // namespace kdx
