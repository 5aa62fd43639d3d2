// Changes or adds one parameter of a KDX text and keeps every other byte of it.
//
//     change_value PATH NAME VALUE < old.kdx > new.kdx
#include <kiv/Error.h>
#include <kiv/KDXDocument.h>

#include <iostream>
#include <iterator>

int main(int argc, char** argv) try {
    if (argc != 4) {
        std::cerr << "usage: change_value PATH NAME VALUE\n";
        return 2;
    }
    const std::string text(std::istreambuf_iterator<char>(std::cin), {});
    kiv::KDXDocument document(text);
    document.set(kiv::readPath(argv[1]), argv[2], argv[3]);
    std::cout << document.text();
} catch (const kiv::Error& error) {
    std::cerr << "change_value: " << error.message() << '\n';
    return 1;
}
