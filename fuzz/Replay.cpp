// Runs a fuzz target on every file of the folders named, for builds without a fuzzer.

#include <exception>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>

#include "Support.h"

namespace {

std::string bytesOf(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

void replay(const std::filesystem::path& path) {
    const std::string bytes = bytesOf(path);
    std::cerr << path.filename() << '\n';
    LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
}

}  // namespace

int main(int argc, char** argv) {
    std::size_t count = 0;
    for (int i = 1; i < argc; ++i) {
        for (const auto& file : std::filesystem::directory_iterator(argv[i])) {
            replay(file.path());
            ++count;
        }
    }
    std::cout << count << " inputs\n";
    return count == 0 ? 1 : 0;
}
