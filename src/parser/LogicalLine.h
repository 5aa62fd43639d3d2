#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "base/Blank.h"

// A physical line that ends in a backslash is continued by the next one. A logical line is its
// physical lines end to end, without those backslashes and without the leading blanks of all but
// the first.
//
// On the first physical line, blanks may follow the backslash, provided that a backslash and a
// space stand side by side somewhere in that line: a backslash and a carriage return alone continue
// nothing.

namespace kiv::detail {

/// Whether the physical line behind this one belongs to the same logical line.
inline bool isContinued(std::string_view line) {
    return !line.empty() && line.back() == '\\';
}

/// Whether the line behind this one may belong to it; false for nearly all lines.
inline bool mayBeContinued(std::string_view line) {
    return !line.empty() && (line.back() == '\\' || isBlank(line.back()));
}

/// What the first physical line of a logical line gives to it: the line, or the line without outer
/// blanks where it is continued only without them.
std::string_view firstPhysicalLine(std::string_view line);

/// Joins the physical lines of one logical line after another, in storage that it uses again.
class LogicalLine {
public:
    /// The logical line that begins with `line`: `line` itself where it is not continued, else a
    /// view of the joined text that lives until the next call.
    ///
    /// `next` hands out the physical lines behind `line`, one a call: `bool(std::string_view&)`,
    /// false where there is none, which ends the logical line.
    template <typename Next>
    std::string_view join(std::string_view line, Next next) {
        return join(line, next, [](std::size_t, std::string_view) {});
    }

    /// The same. `note` is told of each physical line that is joined, the first included, what of
    /// it goes into the logical line, and where there that begins: `void(std::size_t,
    /// std::string_view)`.
    template <typename Next, typename Note>
    std::string_view join(std::string_view line, Next next, Note note) {
        if (!isContinued(line)) return line;
        text.clear();
        bool continued = append(line, note);
        while (continued && next(line)) continued = append(withoutLeadingBlanks(line), note);
        return text;
    }

private:
    template <typename Note>
    bool append(std::string_view share, Note& note) {
        note(text.size(), share);
        const bool continued = isContinued(share);
        text += share.substr(0, share.size() - (continued ? 1 : 0));
        return continued;
    }

    std::string text;
};

}  // namespace kiv::detail
