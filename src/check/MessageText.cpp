#include "check/MessageText.h"

#include "base/ShownText.h"

namespace kiv::detail {
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
