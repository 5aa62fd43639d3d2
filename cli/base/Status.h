#pragma once

#include <algorithm>
#include <stdexcept>

namespace kdx {

/// What the program's exit status says.
enum class Status : int {
    fine = 0,
    findings = 1,  ///< problems found, would change, differs, not there
    trouble = 2,   ///< the command could not do its work: usage, input, output
};

inline Status worse(Status a, Status b) {
    return std::max(a, b);
}

/// Why the work on one file, or all work, cannot be done; the text is for the user to read.
class Trouble : public std::runtime_error {
    using std::runtime_error::runtime_error;
};

}  // namespace kdx
