#include "check/MessageText.h"

#include "base/ShownText.h"

namespace kiv::detail {
namespace {

std::string hexadecimal(unsigned number, int digits) {
    std::string text;
    for (int shift = 4 * (digits - 1); shift >= 0; shift -= 4)
        text += "0123456789ABCDEF"[(number >> static_cast<unsigned>(shift)) & 0xFU];
    return text;
}

/// The number of a character of two or three bytes.
unsigned codePoint(std::string_view character) {
    unsigned number = static_cast<unsigned char>(character.front()) & 0x1FU;
    for (const char c : character.substr(1))
        number = number << 6U | (static_cast<unsigned char>(c) & 0x3FU);
    return number & 0xFFFFU;
}

}  // namespace

std::size_t characterLength(std::string_view text) {
    for (const std::size_t length : {1U, 2U, 3U, 4U})
        if (findNoUtf8(text.substr(0, length)) == std::string_view::npos) return length;
    return 1;
}

std::string describedCharacter(std::string_view text) {
    if (text.front() == '\t') return "a tab";
    const std::string_view character = text.substr(0, characterLength(text));
    const bool isVisible = leadingControl(character) == 0;
    if (isVisible && findNoUtf8(character) == std::string_view::npos)
        return '\'' + std::string(character) + '\'';
    if (character.size() > 1) return "the character U+" + hexadecimal(codePoint(character), 4);
    return "the byte 0x" + hexadecimal(static_cast<unsigned char>(character.front()), 2);
}

std::string describedObject(const SeenName& name) {
    std::string text(name.first);
    if (!name.second.empty()) text.append(": ").append(name.second);
    return "object '" + shown(text) + '\'';
}

std::string ofLine(const KDXPlace& place) {
    return "of line " + std::to_string(place.line);
}

}  // namespace kiv::detail
