#pragma once

#include <cstddef>
#include <string_view>

#include "base/Blank.h"

// The comment of a line begins at its first '#'. A line that begins with '!' has none. When a
// backslash stands right before that '#', the line has none either, whatever follows.

namespace kiv::detail {

/// Where the comment of a line begins whose first '#' is at `hash`, the end of the line or beyond
/// for none: the end of the line when it has no comment. The line must not begin with '!'.
inline std::size_t commentBegin(std::string_view line, std::size_t hash) {
    if (hash >= line.size()) return line.size();
    return hash > 0 && line[hash - 1] == '\\' ? line.size() : hash;
}

/// The same for any line, which may begin with blanks.
inline std::size_t findComment(std::string_view line, std::size_t hash) {
    const std::string_view text = withoutLeadingBlanks(line);
    if (!text.empty() && text.front() == '!') return line.size();
    return commentBegin(line, hash);
}

/// The part of a line that carries meaning, as a view of it: without leading blanks and, unless it
/// then begins with '!', without its comment and trailing blanks.
///
/// The first `nameLength` bytes of the line are known to be name characters, of which the first is
/// no blank: they are not looked at again.
inline std::string_view trimLine(std::string_view line, std::size_t nameLength = 0) {
    const std::string_view text = withoutLeadingBlanks(line);
    if (text.empty() || text.front() == '!') return text;
    return withoutTrailingBlanks(text.substr(0, commentBegin(text, text.find('#', nameLength))));
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
