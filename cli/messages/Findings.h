#pragma once

#include <kiv/KDXCheck.h>

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "Diagnostics.h"
#include "base/Settings.h"
#include "io/Source.h"

namespace kdx {

/// Problems, of which those beyond a limit are only counted.
class Findings {
public:
    /// Keeps at most `maxProblems` errors and as many warnings; 0 is no limit.
    explicit Findings(std::size_t maxProblems) : limit(maxProblems) {}

    /// What the library has to say about a source, which must outlive the findings.
    Findings(const Source& source, const kiv::KDXCheck::Report& report);

    void add(Problem problem);

    std::size_t errors() const { return errorCount; }
    std::size_t warnings() const { return warningCount; }

    /// Appends the problems to `out`, in the order of their lines, and how many were left out;
    /// `cure`, which may be empty, says how to see those.
    void append(std::string& out, std::string_view file, MessageStyle style, std::string_view cure);

    /// The same in the style of the standard error stream.
    void append(std::string& out, std::string_view file, const Settings& settings,
                std::string_view cure) {
        append(out, file, errorStyle(settings), cure);
    }

private:
    std::size_t limit = 0;
    std::size_t errorCount = 0;
    std::size_t warningCount = 0;
    std::vector<Problem> problems;
};

/// How many errors, and how many warnings, are shown of a file unless the user asks for more.
constexpr std::size_t kDefaultMaxErrors = 100;

/// What a check needs to know. `maxProblems` is the limit of Findings.
kiv::KDXCheck::Options checkOptions(const Settings& settings, std::size_t maxProblems);

}  // namespace kdx
