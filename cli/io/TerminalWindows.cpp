#include <fcntl.h>
#include <io.h>
#include <windows.h>

#include <cstdio>
#include <cstdlib>
#include <string_view>

#include "Output.h"

namespace kdx {

void prepareStreams() {
    for (std::FILE* stream : {stdin, stdout, stderr}) _setmode(_fileno(stream), _O_BINARY);
}

bool inputIsTerminal() {
    return _isatty(_fileno(stdin)) != 0;
}

bool outputIsTerminal() {
    return _isatty(_fileno(stdout)) != 0;
}

bool errorIsTerminal() {
    return _isatty(_fileno(stderr)) != 0;
}

bool terminalFollowsControls() {
    const char* name = std::getenv("TERM");
    return name == nullptr || std::string_view(name) != "dumb";
}

std::size_t errorWidth() {
    CONSOLE_SCREEN_BUFFER_INFO info{};
    if (::GetConsoleScreenBufferInfo(::GetStdHandle(STD_ERROR_HANDLE), &info) == 0) return 80;
    return static_cast<std::size_t>(info.srWindow.Right - info.srWindow.Left) + 1;
}

}  // namespace kdx
