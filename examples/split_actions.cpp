// Divides KDX text into what is to be done and what is to be set, and indents the latter anew.
#include <kiv/ExtractActionOrStateFromKDX.h>
#include <kiv/KDXFormatting.h>

#include <iostream>
#include <iterator>
#include <sstream>

namespace {

std::vector<std::string> linesOf(const std::string& text) {
    std::vector<std::string> lines;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);) lines.push_back(line);
    return lines;
}

}  // namespace

int main() {
    namespace Extract = kiv::ExtractActionOrStateFromKDX;

    const std::string text(std::istreambuf_iterator<char>(std::cin), {});
    for (const auto& [kind, run] : Extract::extractActionOrStateFromKDX(text)) {
        std::cout << (kind == Extract::Action ? "to do:\n" : "to set:\n");
        for (const std::string& line : kiv::KDXFormatting::indentKDX(linesOf(run)))
            std::cout << "  " << line << '\n';
    }
}
