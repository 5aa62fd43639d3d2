#pragma once

#include <string>
#include <string_view>

namespace kdx {

/// Makes the standard streams carry bytes as they are, and a write to a closed pipe an error
/// instead of the end of the process.
void prepareStreams();

/// Writes to the standard output. @throws Trouble when that fails.
void writeOutput(std::string_view text);

/// Text on its way to the standard output, printed in pieces, so that it need not be held whole.
struct Printer {
    std::string text;  ///< not printed yet

    /// @throws Trouble when that fails, as does printIfLong().
    void print();
    void printIfLong();
};

/// Makes sure that all output has left the process. @throws Trouble when that fails.
void finishOutput();

/// Writes to the standard error stream, where a failure cannot be reported.
void writeError(std::string_view text);

bool inputIsTerminal();
bool outputIsTerminal();
bool errorIsTerminal();

}  // namespace kdx
