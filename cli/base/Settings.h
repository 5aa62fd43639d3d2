#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace kdx {

/// The largest limit that an option takes.
constexpr std::size_t kMaxCount = 1000000000;

/// What holds for every command.
struct Settings {
    bool json = false;        ///< diagnostics, and the results of some commands, as JSON lines
    bool errorColor = false;  ///< colour on the standard error stream
    bool outputColor = false;
    std::string inputName;        ///< what messages call the standard input, unless it is empty
    std::size_t jobs = 1;         ///< files worked on at the same time
    std::size_t maxDepth = 1000;  ///< levels of nested objects
    std::vector<std::string> excludes;  ///< globs for what to leave out of directories
};

}  // namespace kdx
