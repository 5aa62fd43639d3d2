#pragma once

#include <cstddef>
#include <string_view>

namespace kiv::detail {

/// What some programs put in front of a text. It is no part of any statement.
constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

inline bool startsWithByteOrderMark(std::string_view text) {
    return text.substr(0, kByteOrderMark.size()) == kByteOrderMark;
}

inline std::size_t byteOrderMarkLength(std::string_view text) {
    return startsWithByteOrderMark(text) ? kByteOrderMark.size() : 0;
}

}  // namespace kiv::detail
