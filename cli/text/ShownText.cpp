#include "ShownText.h"

#include <kiv/KDXText.h>

namespace kdx {
namespace {

constexpr std::size_t kShownLength = 80;

}  // namespace

bool continuesCharacter(char c) {
    return (static_cast<unsigned char>(c) & 0xC0U) == 0x80U;
}

std::size_t characterBegin(std::string_view text, std::size_t offset) {
    while (offset > 0 && offset < text.size() && continuesCharacter(text[offset])) --offset;
    return offset;
}

std::string_view firstColumns(std::string_view text, std::size_t columns) {
    std::size_t length = 0;
    while (length < text.size() && (columns > 0 || continuesCharacter(text[length])))
        columns -= continuesCharacter(text[length++]) ? 0 : 1;
    return text.substr(0, length);
}

std::string shown(std::string_view text) {
    if (text.size() <= kShownLength) return kiv::visibleText(text);
    return kiv::visibleText(text.substr(0, characterBegin(text, kShownLength - 3))) + "...";
}

std::string shownName(std::string_view name) {
    return name.empty() ? "\"\"" : shown(name);
}

std::string describedByte(char c) {
    if (c == '\t') return "a tab";
    if (c >= ' ' && c <= '~') return {'\'', c, '\''};
    constexpr const char* kDigits = "0123456789ABCDEF";
    const auto byte = static_cast<unsigned char>(c);
    return std::string("the byte 0x") + kDigits[byte / 16] + kDigits[byte % 16];
}

std::string counted(std::size_t count, std::string_view noun) {
    return std::to_string(count).append(1, ' ').append(noun).append(count == 1 ? "" : "s");
}

}  // namespace kdx
