#pragma once

#include <string_view>

namespace kiv::detail {

/// How a text ends: with "\n", "\r\n" or neither, as a view of its end.
inline std::string_view lineEndOf(std::string_view text) {
    if (text.empty() || text.back() != '\n') return text.substr(text.size());
    const bool withReturn = text.size() > 1 && text[text.size() - 2] == '\r';
    return text.substr(text.size() - (withReturn ? 2 : 1));
}

inline std::string_view withoutLineEnd(std::string_view text) {
    return text.substr(0, text.size() - lineEndOf(text).size());
}

}  // namespace kiv::detail
