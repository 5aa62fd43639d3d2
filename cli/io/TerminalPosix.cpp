#include <fcntl.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include <csignal>
#include <cstdlib>
#include <string_view>

#include "Output.h"

namespace kdx {
namespace {

/// Occupies every standard stream that came closed: a file opened later would get its number, and
/// then the messages. Opened the wrong way round, reading and writing still fail, as on a closed
/// one.
void occupyClosedStreams() {
    for (int stream = STDIN_FILENO; stream <= STDERR_FILENO; ++stream)
        if (::fcntl(stream, F_GETFD) < 0)
            (void)::open("/dev/null", stream == STDIN_FILENO ? O_WRONLY : O_RDONLY);
}

}  // namespace

void prepareStreams() {
    (void)std::signal(SIGPIPE, SIG_IGN);
    occupyClosedStreams();
}

bool inputIsTerminal() {
    return isatty(STDIN_FILENO) == 1;
}

bool outputIsTerminal() {
    return isatty(STDOUT_FILENO) == 1;
}

bool errorIsTerminal() {
    return isatty(STDERR_FILENO) == 1;
}

bool terminalFollowsControls() {
    const char* name = std::getenv("TERM");  // NOLINT(concurrency-mt-unsafe): nobody sets it
    return name != nullptr && *name != '\0' && std::string_view(name) != "dumb";
}

std::size_t errorWidth() {
    struct winsize size {};
    const bool known = ::ioctl(STDERR_FILENO, TIOCGWINSZ, &size) == 0 && size.ws_col > 0;
    return known ? size.ws_col : 80;
}

}  // namespace kdx
