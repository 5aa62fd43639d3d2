// Reads a value of a KDX text, changes it, and says what is wrong with the text.
#include <kiv/KDXCheck.h>
#include <kiv/KDXDocument.h>
#include <kiv/KDXToStringMapMap.h>

#include <iostream>
#include <iterator>

namespace {

void readValue(const std::string& text) {
    kiv::StringMapMap map;
    kiv::KDXToStringMapMap::convert(text, map);
    std::cout << map.at("/Sample:s1/Channel:A").at("Gain") << '\n';
}

void changeValue(const std::string& text) {
    kiv::KDXDocument document(text);
    document.set(kiv::readPath("/Sample:s1/Channel:A"), "Gain", "20");
    std::cout << document.text();
}

void findProblems(const std::string& text) {
    for (const auto& problem : kiv::KDXCheck::check(text).problems)
        std::cout << problem.begin.line << ':' << problem.begin.column << ": " << problem.message
                  << '\n';
}

}  // namespace

int main() {
    const std::string text(std::istreambuf_iterator<char>(std::cin), {});
    readValue(text);
    changeValue(text);
    findProblems(text + "Gain = 10\nEND\n");
}
