#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace kiv::detail {

constexpr std::size_t kShownLength = 80;

/// How many bytes of a control character, in ASCII or UTF-8, the text begins with. Those that turn
/// the direction of writing are among them: they make a line look like another one.
inline std::size_t leadingControl(std::string_view text) {
    const auto first = static_cast<unsigned char>(text.front());
    if (first < ' ' || first == 0x7F) return 1;
    if (first < 0x80) return 0;
    const auto isBetween = [text](std::string_view low, std::string_view high) {
        const std::string_view begin = text.substr(0, low.size());
        return begin.size() == low.size() && low <= begin && begin <= high;
    };
    if (isBetween("\xC2\x80", "\xC2\x9F") || isBetween("\xD8\x9C", "\xD8\x9C")) return 2;
    // NOLINTBEGIN(misc-misleading-bidirectional): they are what is looked for
    const bool turns = isBetween("\xE2\x80\x8E", "\xE2\x80\x8F") ||
                       isBetween("\xE2\x80\xAA", "\xE2\x80\xAE") ||
                       isBetween("\xE2\x81\xA6", "\xE2\x81\xA9");
    // NOLINTEND(misc-misleading-bidirectional)
    return turns ? 3 : 0;
}

/// The text up to a length, without a part of a UTF-8 character at its end.
inline std::string_view cutAt(std::string_view text, std::size_t length) {
    const auto continuesCharacter = [text](std::size_t i) {
        return (static_cast<unsigned char>(text[i]) & 0xC0U) == 0x80U;
    };
    while (length > 0 && continuesCharacter(length)) --length;
    return text.substr(0, length);
}

/// The text with '?' in place of every control character, and a blank in place of a tab.
inline std::string visible(std::string_view text) {
    std::string result;
    while (!text.empty()) {
        const std::size_t control = leadingControl(text);
        const char mark = text.front() == '\t' ? ' ' : '?';
        result += control == 0 ? text.front() : mark;
        text.remove_prefix(control == 0 ? 1 : control);
    }
    return result;
}

/// Text of a document, fit for a message: control characters are made visible, a long text is cut.
inline std::string shown(std::string_view text) {
    if (text.size() <= kShownLength) return visible(text);
    return visible(cutAt(text, kShownLength - 3)) + "...";
}

}  // namespace kiv::detail
