#include "check/MessageText.h"

namespace kiv::detail {
namespace {

constexpr std::size_t kShownLength = 80;

bool isControl(char c) {
    return static_cast<unsigned char>(c) < ' ' || c == '\x7F';
}

bool continuesCharacter(char c) {
    return (static_cast<unsigned char>(c) & 0xC0U) == 0x80U;
}

/// The text up to a length, without a part of a character at its end.
std::string_view cut(std::string_view text, std::size_t length) {
    while (length > 0 && continuesCharacter(text[length])) --length;
    return text.substr(0, length);
}

}  // namespace

std::string shown(std::string_view text) {
    const bool isLong = text.size() > kShownLength;
    std::string result(isLong ? cut(text, kShownLength - 3) : text);
    for (char& c : result)
        if (isControl(c)) c = c == '\t' ? ' ' : '?';
    return isLong ? result + "..." : result;
}

std::string describedByte(char c) {
    if (c == '\t') return "a tab";
    if (c >= ' ' && c <= '~') return {'\'', c, '\''};
    constexpr const char* kDigits = "0123456789ABCDEF";
    const auto byte = static_cast<unsigned char>(c);
    return std::string("the byte 0x") + kDigits[byte / 16] + kDigits[byte % 16];
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
