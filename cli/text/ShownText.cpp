#include "ShownText.h"

namespace kdx {
namespace {

constexpr std::size_t kShownLength = 80;

bool isControl(char c) {
    return static_cast<unsigned char>(c) < ' ' || c == '\x7f';
}

}  // namespace

bool continuesCharacter(char c) {
    return (static_cast<unsigned char>(c) & 0xC0U) == 0x80U;
}

std::string printable(std::string_view text) {
    std::string result;
    for (const char c : text) result += c == '\t' ? ' ' : isControl(c) ? '?' : c;
    return result;
}

std::size_t characterBegin(std::string_view text, std::size_t offset) {
    while (offset > 0 && offset < text.size() && continuesCharacter(text[offset])) --offset;
    return offset;
}

std::string shown(std::string_view text) {
    if (text.size() <= kShownLength) return printable(text);
    return printable(text.substr(0, characterBegin(text, kShownLength - 3))) + "...";
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
