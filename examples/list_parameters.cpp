// Lists the parameters of a KDX text: where each value stands, the objects around it, what it says.
#include <kiv/KDXReader.h>

#include <iostream>
#include <iterator>
#include <string>
#include <vector>

int main() {
    const std::string text(std::istreambuf_iterator<char>(std::cin), {});
    std::vector<std::string> open;
    for (kiv::KDXReader reader(text); reader.next();) {
        open.resize(reader.depth());
        if (reader.kind() == kiv::MiniKDXParser::lineObject)
            open.push_back(std::string(reader.first()) + ' ' + std::string(reader.second()));
        if (reader.kind() != kiv::MiniKDXParser::lineParameter) continue;

        const kiv::KDXPlace place = reader.placeOf(kiv::KDXReader::Part::second);
        std::cout << place.line << ':' << place.column << '\t';
        for (const std::string& object : open) std::cout << object << ", ";
        std::cout << reader.first() << ": " << reader.second() << '\n';
    }
}
