#pragma once

namespace kiv::detail {

/// A name character is an ASCII letter or digit, or one of space, '&', '.' and '_'.
constexpr bool isNameCharacter(char c) {
    return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') || c == ' ' ||
           c == '&' || c == '.' || c == '_';
}

}  // namespace kiv::detail
