// Reads KDX text from the standard input into a map, unless its objects nest too deeply.
#include <kiv/KDXToStringMapMap.h>
#include <kiv/MiniKDXParser.h>

#include <cstddef>
#include <iostream>
#include <string>
#include <vector>

constexpr std::size_t kDeepest = 3;

struct TooDeep {
    std::size_t line;
};

class DepthLimit : public kiv::MiniKDXParser {
    using MiniKDXParser::MiniKDXParser;
    void newObject(const std::string& /*type*/, const std::string& /*name*/) override {
        if (objectStack.size() == kDeepest) throw TooDeep{getLineNumber()};
    }
};

void read(const std::vector<std::string>& lines) {
    DepthLimit(lines).parse();
    kiv::StringMapMap map;
    kiv::KDXToStringMapMap::convert(lines, map);
    std::cout << map.size() << " objects\n";
}

int main() {
    std::vector<std::string> lines;
    for (std::string line; std::getline(std::cin, line);) lines.push_back(line);
    try {
        read(lines);
        lines.insert(lines.end(), {"A:", "B:", "C:", "D:"});
        read(lines);
    } catch (const TooDeep& tooDeep) {
        std::cout << "line " << tooDeep.line + 1 << ": more than " << kDeepest
                  << " objects inside one another\n";
    }
}
