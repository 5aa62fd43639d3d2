#pragma once

#include <cstddef>
#include <string_view>

#include "base/Blank.h"

// The comment of a line begins at its first '#'. A line that begins with '!' has none. When a
// backslash stands right before that '#', the line has none either, whatever follows.

namespace kiv::detail {

/// The part of the text that is no comment, where its first '#' is at `hash`, npos for none.
inline std::string_view withoutComment(std::string_view text, std::size_t hash) {
    if (hash == std::string_view::npos) return text;
    if (hash > 0 && text[hash - 1] == '\\') return text;
    return text.substr(0, hash);
}

/// The part of a line that carries meaning, as a view of it: without leading blanks and, unless it
/// then begins with '!', without its comment and trailing blanks.
///
/// The first `nameLength` bytes of the line are known to be name characters, of which the first is
/// no blank: they are not looked at again.
inline std::string_view trimLine(std::string_view line, std::size_t nameLength = 0) {
    const std::string_view text = withoutLeadingBlanks(line);
    if (text.empty() || text.front() == '!') return text;
    return withoutTrailingBlanks(withoutComment(text, text.find('#', nameLength)));
}

/// The line without outer blanks and, unless it begins with '!' or '$', without the first '#' and
/// what follows it. Unlike trimLine(), this spares no '#' behind a backslash: what it is for, tidy
/// text, shows a line without anything that looks like a comment.
inline std::string_view removeComment(std::string_view line) {
    const std::string_view text = withoutLeadingBlanks(line);
    const bool verbatim = !text.empty() && (text.front() == '!' || text.front() == '$');
    return withoutTrailingBlanks(verbatim ? text : text.substr(0, text.find('#')));
}

}  // namespace kiv::detail
