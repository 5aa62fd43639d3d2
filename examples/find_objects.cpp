// Finds objects in KDX text, one by its name, then all of a type.
#include <kiv/ObjectKDXParser.h>

#include <iostream>

namespace {

constexpr int kWithoutNested = 0;
constexpr int kEverything = -1;

void print(const std::vector<std::string>& lines) {
    for (const std::string& line : lines) std::cout << line << '\n';
}

}  // namespace

int main() {
    std::vector<std::string> lines;
    for (std::string line; std::getline(std::cin, line);) lines.push_back(line);
    kiv::ObjectKDXParser parser(lines);

    std::cout << "The object named web:\n";
    parser.parseForObject("web", kWithoutNested);
    print(parser.getResults());

    std::cout << "\nThe variables of each service:\n";
    parser.parseForObjectsByType("Variables", kEverything, "Service");
    for (const auto& [service, variables] : parser.getTypeResults()) {
        std::cout << service << '\n';
        print(variables);
    }
}
