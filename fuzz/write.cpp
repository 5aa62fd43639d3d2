// A map of any texts, a path to mark, a format: the text written.

#include <kiv/KDXToStringMapMap.h>
#include <kiv/StringMapMapToKDX.h>

#include "Support.h"

namespace {

constexpr const char* kMark = "&replace ";

// Per object a key, its parameters each behind a tab, and a line feed.
kiv::StringMapMap mapOf(fuzz::Input& input) {
    kiv::StringMapMap map;
    for (const std::string& line : input.lines()) {
        fuzz::Input pieces(line);
        auto& parameters = map[pieces.until('\t')];
        while (!pieces.empty()) {
            const std::string name = pieces.until('=');
            parameters[name] = pieces.until('\t');
        }
    }
    return map;
}

bool hasMark(const std::string& text) {
    return text.find(kMark) != std::string::npos;
}

bool isPlain(const kiv::StringMapMap& map) {
    constexpr const char* letters = "abcdefghijklmnopqrstuvwxyz";
    constexpr const char* pathText = "abcdefghijklmnopqrstuvwxyz/:";
    constexpr std::size_t none = std::string::npos;
    for (const auto& [path, parameters] : map) {
        if (path.find_first_not_of(pathText) != none) return false;
        for (const auto& [name, value] : parameters)
            if (name.find_first_not_of(letters) != none ||
                value.find_first_not_of(pathText) != none)
                return false;
    }
    return true;
}

// Read and written once more, a map has its paths in the one form that readers give them, and an
// entry for every object on the way.
void requireStable(const std::string& text) {
    kiv::StringMapMap map;
    kiv::KDXToStringMapMap::convert(text, map);
    std::string again;
    kiv::StringMapMapToKDX::convert(map, again);
    fuzz::require(again == text, "map, text, map, text");
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    fuzz::Input input(data, size);
    const unsigned options = input.byte();
    const std::string replacePath = input.until('\n');
    const kiv::StringMapMap map = mapOf(input);
    const kiv::StringMapMapToKDX::Format format(static_cast<int>(options % 5), options % 2 == 0,
                                                options % 3 == 0);

    std::string text = "before";
    kiv::StringMapMapToKDX::convert(replacePath, map, text, format);
    std::string constructed;
    const kiv::StringMapMapToKDX conversion(replacePath, map, constructed, format);
    fuzz::require(text == "before" + constructed,
                  "text is appended; the constructor does the same");

    std::string unmarked;
    kiv::StringMapMapToKDX::convert(map, unmarked, format);
    const std::size_t mark = constructed.size() - unmarked.size();
    fuzz::require(mark == 0 || mark == std::string_view(kMark).size(),
                  "at most one object is marked");
    if (mark != 0 && !hasMark(unmarked)) constructed.erase(constructed.find(kMark), mark);
    fuzz::require((mark != 0 && hasMark(unmarked)) || constructed == unmarked,
                  "the mark changes nothing else");

    std::string canonical;
    kiv::StringMapMapToKDX::convert(map, canonical);
    if (isPlain(map) && map.count("") == 0) requireStable(canonical);
    return 0;
}
