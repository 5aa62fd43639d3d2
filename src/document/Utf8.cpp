#include <kiv/KDXText.h>

#include <cstdint>

#include "base/MachineWord.h"

// A character begins with a byte below 0x80, which is all of it, or from 0xC2 to 0xF4, which is
// followed by one to three bytes from 0x80 to 0xBF. Behind 0xE0, 0xED, 0xF0 and 0xF4 the first of
// those is limited further: to the shortest form, to what is no surrogate, to U+10FFFF.

namespace kiv {
namespace {

using Byte = unsigned char;

bool isBetween(Byte low, Byte byte, Byte high) {
    return low <= byte && byte <= high;
}

bool followsLead(Byte lead, Byte byte) {
    const Byte low = lead == 0xE0 ? 0xA0 : lead == 0xF0 ? 0x90 : 0x80;
    const Byte high = lead == 0xED ? 0x9F : lead == 0xF4 ? 0x8F : 0xBF;
    return isBetween(low, byte, high);
}

/// The length of the character at the front of a text that is not empty; 0 when there is none.
std::size_t characterLength(std::string_view text) {
    const Byte lead = static_cast<Byte>(text.front());
    if (lead < 0x80) return 1;
    if (!isBetween(0xC2, lead, 0xF4)) return 0;
    const std::size_t length = lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
    if (text.size() < length || !followsLead(lead, static_cast<Byte>(text[1]))) return 0;
    for (std::size_t i = 2; i < length; ++i)
        if (!isBetween(0x80, static_cast<Byte>(text[i]), 0xBF)) return 0;
    return length;
}

/// The offset of the first byte from `offset` on that may be no ASCII.
std::size_t skipAscii(std::string_view text, std::size_t offset) {
    constexpr std::uint64_t kHighBits = 0x8080808080808080U;
    const char* const begin = text.data();
    while (text.size() - offset >= 16 &&
           ((detail::wordAt(begin + offset) | detail::wordAt(begin + offset + 8)) & kHighBits) == 0)
        offset += 16;
    return offset;
}

}  // namespace

std::size_t findNoUtf8(std::string_view text) noexcept {
    for (std::size_t offset = skipAscii(text, 0); offset < text.size();) {
        const std::size_t length = characterLength(text.substr(offset));
        if (length == 0) return offset;
        offset = length == 1 ? offset + 1 : skipAscii(text, offset + length);
    }
    return std::string_view::npos;
}

}  // namespace kiv
