#pragma once

#include <string>
#include <vector>

#include "Edit.h"
#include "base/Settings.h"

namespace kdx {

/// What becomes of the changed text; it is printed where neither is asked for.
struct ChangeOptions {
    bool inPlace = false;
    bool diff = false;
};

/// Makes all edits in each of the files, as listFiles() takes them, in their order; a file in which
/// one of them cannot be made stays as it is. In place, a file that is named twice is changed once.
/// @return findings where something to change is not there, and where a diff is not empty.
Status changeFiles(const std::vector<std::string>& files, const std::vector<Edit>& edits,
                   const ChangeOptions& options, const Settings& settings);

}  // namespace kdx
