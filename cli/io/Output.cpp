#include "Output.h"

#include <cerrno>
#include <cstdio>
#include <system_error>

#include "base/Status.h"

namespace kdx {
namespace {

[[noreturn]] void failWrite(int error) {
    if (error == EPIPE) throw OutputClosed();
    throw Trouble("standard output: cannot be written: " + std::generic_category().message(error));
}

}  // namespace

void writeOutput(std::string_view text) {
    errno = 0;
    if (std::fwrite(text.data(), 1, text.size(), stdout) != text.size()) failWrite(errno);
}

void Printer::print() {
    writeOutput(text);
    text.clear();
}

void Printer::printIfLong() {
    constexpr std::size_t kLong = 1U << 16U;
    if (text.size() >= kLong) print();
}

void finishOutput() {
    errno = 0;
    if (std::fflush(stdout) != 0 || std::ferror(stdout) != 0) failWrite(errno);
}

void writeError(std::string_view text) {
    (void)std::fwrite(text.data(), 1, text.size(), stderr);
}

}  // namespace kdx
