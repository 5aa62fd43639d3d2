#include <unistd.h>

#include <csignal>

#include "Output.h"

namespace kdx {

void prepareStreams() {
    (void)std::signal(SIGPIPE, SIG_IGN);
}

bool outputIsTerminal() {
    return isatty(STDOUT_FILENO) == 1;
}

bool errorIsTerminal() {
    return isatty(STDERR_FILENO) == 1;
}

}  // namespace kdx
