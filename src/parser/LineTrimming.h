#pragma once

#include <cstddef>
#include <string_view>

namespace kiv::detail {

/// The part of a line that carries meaning, as a view of it: without leading blanks and, unless it
/// then begins with '!', without its comment and trailing blanks.
///
/// The comment begins at the first '#' of the line. When a backslash stands right before that '#',
/// the line has no comment, whatever follows.
///
/// The first `nameLength` bytes of the line are known to be name characters, of which the first is
/// no blank: they are not looked at again.
std::string_view trimLine(std::string_view line, std::size_t nameLength = 0);

/// The line without outer blanks and, unless it begins with '!' or '$', without the first '#' and
/// what follows it. Unlike trimLine(), this spares no '#' behind a backslash: what it is for, tidy
/// text, shows a line without anything that looks like a comment.
std::string_view removeComment(std::string_view line);

}  // namespace kiv::detail
