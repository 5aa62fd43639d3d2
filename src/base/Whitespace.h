#pragma once

#include <cassert>
#include <string>
#include <string_view>

#include "base/Blank.h"

namespace kiv::detail {

/// Whether every blank is a lone space. `text` must have no outer blanks.
inline bool hasSimpleWhitespace(std::string_view text) {
    assert(text.empty() || !isBlank(text.back()));
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (!isBlank(text[i])) continue;
        if (text[i] != ' ' || isBlank(text[i + 1])) return false;
    }
    return true;
}

/// The text with one space for each run of blanks: the text itself where that is so already, else
/// a view of `storage`. `text` must have no outer blanks and must not lie in `storage`.
inline std::string_view simplified(std::string_view text, std::string& storage) {
    if (hasSimpleWhitespace(text)) return text;
    storage.clear();
    bool afterBlank = false;
    for (const char c : text) {
        const bool blank = isBlank(c);
        if (!blank) storage += c;
        if (blank && !afterBlank) storage += ' ';
        afterBlank = blank;
    }
    return storage;
}

/// Where byte `offset` of the simplified text stands in the text itself, which must have no outer
/// blanks. `offset` may be the end.
inline std::size_t offsetBeforeSimplifying(std::string_view text, std::size_t offset) {
    std::size_t at = 0;
    for (; offset > 0; --offset) {
        const bool blank = isBlank(text[at++]);
        while (blank && isBlank(text[at])) ++at;
    }
    return at;
}

}  // namespace kiv::detail
