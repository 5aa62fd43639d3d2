// Reads KDX text, changes or adds one parameter, and writes the text anew.
//
//     change_value PATH NAME VALUE < old.kdx > new.kdx
#include <kiv/Error.h>
#include <kiv/KDXToStringMapMap.h>
#include <kiv/StringMapMapToKDX.h>

#include <iostream>
#include <iterator>

namespace {

int fail(const std::string& message) {
    std::cerr << "change_value: " << message << '\n';
    return 1;
}

}  // namespace

int main(int argc, char** argv) try {
    if (argc != 4) return fail("expected PATH NAME VALUE");
    const std::string path = argv[1];

    const std::string text(std::istreambuf_iterator<char>(std::cin), {});
    kiv::StringMapMap map;
    kiv::KDXToStringMapMap::convert(text, map);
    if (map.count(path) == 0) return fail("no object " + path);
    map[path][argv[2]] = argv[3];

    std::string changed;
    kiv::StringMapMapToKDX::convert(map, changed);
    std::cout << changed;
} catch (const kiv::Error& error) {
    return fail(error.message());
} catch (const kiv::KDXToStringMapMap::Except& error) {
    return fail(error.message());
}
