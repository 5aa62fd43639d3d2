// What the library itself says of texts, for the laws that the commands of kdx are held to.
//
//     oracle generate COUNT SEED FOLDER    puts generated texts into files of the folder
//     oracle tell FILE...                  prints what stands in each, in the order of the files:
//
// a record for each file, of lines that end in \x1E and consist of fields that end in \x1F: a line
// "event" for each callback, "entry" for each parameter of the map, "object" for each of its
// objects, and last "end" with what was thrown. Generated texts have neither of these characters.

#include <kiv/KDXReader.h>
#include <kiv/KDXToStringMapMap.h>

#include <cstdlib>
#include <fstream>
#include <initializer_list>
#include <iostream>
#include <iterator>
#include <string>
#include <string_view>

#include "Generate.h"
#include "Support.h"

namespace {

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

void printLine(std::initializer_list<std::string_view> fields) {
    for (const std::string_view field : fields) std::cout << field << '\x1F';
    std::cout << '\x1E';
}

std::string readFile(const char* name) {
    std::ifstream in(name, std::ios::binary);
    std::string text{std::istreambuf_iterator<char>(in), {}};
    if (text.compare(0, kByteOrderMark.size(), kByteOrderMark) == 0)
        text.erase(0, kByteOrderMark.size());
    return text;
}

/// What an action says: readers get it with its comment.
std::string withoutComment(const std::string& action) {
    const std::string trimmed = fuzz::withoutLeadingBlanks(action);
    kiv::KDXReader reader(trimmed);
    reader.next();
    return std::string(reader.text());
}

void tell(const std::string& text) {
    fuzz::Events events(fuzz::Input(text).lines());
    events.read();
    for (const auto& event : events.list)
        printLine({"event", std::string(1, event.kind),
                   event.kind == 'a' ? withoutComment(event.first) : event.first, event.second});
    kiv::StringMapMap map;
    std::string failure;
    try {
        kiv::KDXToStringMapMap::convert(text, map);
    } catch (const kiv::Error& error) {
        failure = error.message();
    } catch (const kiv::KDXToStringMapMap::Except& error) {
        failure = error.message();
    }
    for (const auto& [path, parameters] : map) {
        printLine({"object", path});
        for (const auto& [name, value] : parameters) printLine({"entry", path, name, value});
    }
    printLine({"end", failure});
}

int generate(std::uint64_t count, std::uint64_t seed, const std::string& folder) {
    for (std::uint64_t i = 0; i < count; ++i) {
        std::ofstream out(folder + '/' + std::to_string(i) + ".kdx", std::ios::binary);
        out << fuzz::generateText(seed + i);
    }
    return 0;
}

}  // namespace

int main(int argc, char** argv) {
    const std::string_view command = argc > 1 ? argv[1] : "";
    if (command == "generate" && argc == 5)
        return generate(std::strtoull(argv[2], nullptr, 10), std::strtoull(argv[3], nullptr, 10),
                        argv[4]);
    if (command != "tell") return 2;
    for (int i = 2; i < argc; ++i) tell(readFile(argv[i]));
    return 0;
}
