#pragma once

#include "Arguments.h"
#include "edits/ChangeFiles.h"

namespace kdx {

/// The options of commands that change files.
inline void addChangeOptions(Arguments& arguments, ChangeOptions& options) {
    arguments.flag("-i,--in-place", options.inPlace, "Change the files themselves");
    arguments.flag("--diff", options.diff, "Print what would change as a unified diff")
        .excludes("--in-place");
}

}  // namespace kdx
