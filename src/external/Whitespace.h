#pragma once

#include <string>
#include <string_view>

#include "Blank.h"

namespace kiv::detail {

/// The same as `result.assign(text)`, in half the instructions: assign() allows for a text that
/// lies in `result`.
inline void assignDisjoint(std::string& result, std::string_view text) {
    result.clear();
    result.append(text);
}

/// Whether every blank is a lone space. `text` must have no outer blanks.
inline bool hasSimpleWhitespace(std::string_view text) {
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (!isBlank(text[i])) continue;
        if (text[i] != ' ' || isBlank(text[i + 1])) return false;
    }
    return true;
}

/// Makes `result` the text with one space for each run of blanks, in the storage that `result` has.
/// `text` must have no outer blanks and must not lie in `result`.
inline void assignSimplified(std::string& result, std::string_view text) {
    if (hasSimpleWhitespace(text)) {
        assignDisjoint(result, text);
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
