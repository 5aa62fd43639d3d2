#pragma once

#include <cstddef>
#include <exception>
#include <string>
#include <string_view>

namespace kdx {

/// Makes the standard streams carry bytes as they are, and a write to a closed pipe an error
/// instead of the end of the process.
void prepareStreams();

/// Nobody reads the standard output any more, as behind `| head`: there is nothing more to do, and
/// nothing to say.
class OutputClosed : public std::exception {};

/// Writes to the standard output. @throws Trouble when that fails; OutputClosed.
void writeOutput(std::string_view text);

/// Text on its way to the standard output, printed in pieces, so that it need not be held whole.
struct Printer {
    std::string text;  ///< not printed yet

    /// @throws Trouble when that fails, as does printIfLong().
    void print();
    void printIfLong();
};

/// Makes sure that all output has left the process. @throws Trouble when that fails; OutputClosed.
void finishOutput();

/// Writes to the standard error stream, where a failure cannot be reported.
void writeError(std::string_view text);

bool inputIsTerminal();
bool outputIsTerminal();
bool errorIsTerminal();

/// Whether the terminal follows control sequences, such as those for colours.
bool terminalFollowsControls();

/// The columns of the terminal that the standard error stream is; 80 when nobody knows.
std::size_t errorWidth();

}  // namespace kdx
