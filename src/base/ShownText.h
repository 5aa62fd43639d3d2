#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace kiv::detail {

constexpr std::size_t kShownLength = 80;

/// How many bytes of a control character, in ASCII or UTF-8, the text begins with.
inline std::size_t leadingControl(std::string_view text) {
    const auto first = static_cast<unsigned char>(text.front());
    if (first < ' ' || first == 0x7F) return 1;
    const bool wide = first == 0xC2 && text.size() > 1 &&
                      static_cast<unsigned char>(text[1]) >= 0x80 &&
                      static_cast<unsigned char>(text[1]) < 0xA0;
    return wide ? 2 : 0;
}

/// The text up to a length, without a part of a UTF-8 character at its end.
inline std::string_view cutAt(std::string_view text, std::size_t length) {
    const auto continuesCharacter = [text](std::size_t i) {
        return (static_cast<unsigned char>(text[i]) & 0xC0U) == 0x80U;
    };
    while (length > 0 && continuesCharacter(length)) --length;
    return text.substr(0, length);
}

/// Text of a document, fit for a message: a control character becomes '?', a long text is cut.
inline std::string shown(std::string_view text) {
    const bool isLong = text.size() > kShownLength;
    std::string_view rest = isLong ? cutAt(text, kShownLength - 3) : text;
    std::string result;
    while (!rest.empty()) {
        const std::size_t control = leadingControl(rest);
        const char visible = rest.front() == '\t' ? ' ' : '?';
        result += control == 0 ? rest.front() : visible;
        rest.remove_prefix(control == 0 ? 1 : control);
    }
    return isLong ? result + "..." : result;
}

}  // namespace kiv::detail
