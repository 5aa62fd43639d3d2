// Reads KDX text from the standard input and prints every object with its parameters.
#include <kiv/KDXToStringMapMap.h>

#include <iostream>
#include <iterator>

int main() {
    const std::string text(std::istreambuf_iterator<char>(std::cin), {});
    kiv::StringMapMap map;
    kiv::KDXToStringMapMap::convert(text, map);
    for (const auto& [path, parameters] : map) {
        std::cout << path << '\n';
        for (const auto& [name, value] : parameters)
            std::cout << "  " << name << " = " << value << '\n';
    }
}
