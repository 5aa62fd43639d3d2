// Lays a KDX text out anew, or says where it is no KDX.
#include <kiv/Error.h>
#include <kiv/KDXFormatting.h>

#include <iostream>
#include <iterator>
#include <string>

namespace {

void tidy(const std::string& text) {
    kiv::KDXFormatting::Style style;
    style.indentWidth = 4;
    style.endComments = kiv::KDXFormatting::Style::EndComments::added;
    try {
        std::cout << kiv::KDXFormatting::formatKDX(text, style);
    } catch (const kiv::data::invalid& error) {
        std::cout << error.message() << '\n';
    }
}

}  // namespace

int main() {
    const std::string text(std::istreambuf_iterator<char>(std::cin), {});
    tidy(text);
    tidy(text + "gain -> 3\n");
}
