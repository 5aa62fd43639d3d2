#pragma once

#include <string>
#include <string_view>

#include "Blank.h"

namespace kiv::detail {

/// Whether no blank follows another and every blank is a space.
inline bool hasSimpleWhitespace(std::string_view text) {
    bool afterBlank = false;
    for (const char c : text) {
        const bool blank = isBlank(c);
        if (blank && (afterBlank || c != ' ')) return false;
        afterBlank = blank;
    }
    return true;
}

/// Makes `result` the text without its outer blanks and with one space for each inner run of
/// blanks, in the storage that `result` has. `text` must not lie in `result`.
inline void assignSimplified(std::string& result, std::string_view text) {
    text = withoutOuterBlanks(text);
    if (hasSimpleWhitespace(text)) {
        result.assign(text);
        return;
    }
    result.clear();
    bool afterBlank = false;
    for (const char c : text) {
        const bool blank = isBlank(c);
        if (!blank) result += c;
        if (blank && !afterBlank) result += ' ';
        afterBlank = blank;
    }
}

}  // namespace kiv::detail
