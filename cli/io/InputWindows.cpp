#include <io.h>
#include <windows.h>

#include <algorithm>
#include <cerrno>
#include <climits>
#include <string>
#include <system_error>

#include "Input.h"
#include "base/Status.h"

namespace kdx {
namespace {

// A pipe cannot be waited for; it is asked again and again.
constexpr DWORD kMillisecondsBetweenLooks = 1;

}  // namespace

bool inputArrives(std::chrono::milliseconds patience) {
    const auto end = std::chrono::steady_clock::now() + patience;
    for (;;) {
        DWORD waiting = 0;
        const HANDLE input = ::GetStdHandle(STD_INPUT_HANDLE);
        const bool isPipe = ::PeekNamedPipe(input, nullptr, 0, nullptr, &waiting, nullptr) != 0;
        if (!isPipe || waiting != 0) return true;  // a file never makes anyone wait
        if (std::chrono::steady_clock::now() >= end) return false;
        ::Sleep(kMillisecondsBetweenLooks);
    }
}

std::size_t readInput(char* buffer, std::size_t size) {
    const auto limited = static_cast<unsigned>(std::min<std::size_t>(size, INT_MAX));
    const int count = ::_read(0, buffer, limited);
    if (count >= 0) return static_cast<std::size_t>(count);
    throw Trouble("standard input: cannot be read: " + std::generic_category().message(errno));
}

}  // namespace kdx
