// Runs a fuzz target on every file of the folders named, and on pieces of two of them put together,
// for builds without a fuzzer.

#include <exception>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <map>

#include "Support.h"

namespace {

constexpr int kSplices = 20;

std::string bytesOf(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

void run(const std::string& name, const std::string& bytes) {
    std::cerr << name << '\n';
    LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
}

/// The first half of one text in front of the second half of another.
std::string spliced(const std::string& first, const std::string& second) {
    return first.substr(0, first.size() / 2) + second.substr(second.size() / 2);
}

/// Runs the target on every file, and on each one spliced with some that follow it.
std::size_t replay(const std::filesystem::path& folder) {
    std::map<std::string, std::string> inputs;  // in an order that is the same everywhere
    for (const auto& file : std::filesystem::directory_iterator(folder))
        inputs[file.path().filename().string()] = bytesOf(file.path());
    for (auto first = inputs.begin(); first != inputs.end(); ++first) {
        run(first->first, first->second);
        auto second = std::next(first);
        for (int i = 0; i < kSplices && second != inputs.end(); ++i, ++second)
            run(first->first + '+' + second->first, spliced(first->second, second->second));
    }
    return inputs.size();
}

}  // namespace

int main(int argc, char** argv) {
    std::size_t count = 0;
    for (int i = 1; i < argc; ++i) count += replay(argv[i]);
    std::cout << count << " inputs\n";
    return count == 0 ? 1 : 0;
}
