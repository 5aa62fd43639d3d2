#include <fcntl.h>
#include <io.h>

#include <cstdio>

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

}  // namespace kdx
