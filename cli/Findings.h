#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "Diagnostics.h"
#include "Settings.h"

namespace kdx {

/// Problems, of which those beyond a limit are only counted.
class Findings {
public:
    /// Keeps at most `maxProblems` errors and as many warnings; 0 is no limit.
    explicit Findings(std::size_t maxProblems) : limit(maxProblems) {}

    void add(Problem problem);

    std::size_t errors() const { return errorCount; }
    std::size_t warnings() const { return warningCount; }

    /// Appends the problems to `out`, in the order of their lines, and how many were left out;
    /// `cure`, which may be empty, says how to see those.
    void append(std::string& out, std::string_view file, const Settings& settings,
                std::string_view cure);

private:
    std::size_t limit;
    std::size_t errorCount = 0;
    std::size_t warningCount = 0;
    std::vector<Problem> problems;
};

/// How many errors, and how many warnings, are shown of a file unless the user asks for more.
constexpr std::size_t kDefaultMaxErrors = 100;

}  // namespace kdx
