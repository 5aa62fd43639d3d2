#include <poll.h>
#include <unistd.h>

#include <cerrno>
#include <string>
#include <system_error>

#include "Input.h"
#include "base/Status.h"

namespace kdx {

bool inputArrives(std::chrono::milliseconds patience) {
    pollfd input{STDIN_FILENO, POLLIN, 0};
    return ::poll(&input, 1, static_cast<int>(patience.count())) != 0;
}

std::size_t readInput(char* buffer, std::size_t size) {
    for (;;) {
        const ssize_t count = ::read(STDIN_FILENO, buffer, size);
        if (count >= 0) return static_cast<std::size_t>(count);
        if (errno != EINTR)
            throw Trouble("standard input: cannot be read: " +
                          std::generic_category().message(errno));
    }
}

}  // namespace kdx
