// Runs a fuzz target on generated texts: COUNT of them, from SEED on.

#include <cstdlib>
#include <exception>

#include "Generate.h"
#include "Support.h"

namespace {

std::string current;

[[noreturn]] void showInput() {
    std::cerr << "input:\n" << current << "\n(the end)\n";
    std::_Exit(1);
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 3) {
        std::cerr << "usage: " << argv[0] << " COUNT SEED\n";
        return 2;
    }
    std::set_terminate(showInput);
    fuzz::onBrokenLaw = showInput;
    const std::uint64_t count = std::strtoull(argv[1], nullptr, 10);
    const std::uint64_t seed = std::strtoull(argv[2], nullptr, 10);
    for (std::uint64_t i = 0; i < count; ++i) {
        current = fuzz::generateText(seed + i);
        LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(current.data()),
                               current.size());
    }
    std::cout << count << " texts\n";
    return 0;
}
