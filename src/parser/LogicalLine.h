#pragma once

#include <string>
#include <string_view>

#include "base/Blank.h"

namespace kiv::detail {

/// Whether the physical line behind this one belongs to the same logical line.
inline bool isContinued(std::string_view line) {
    return !line.empty() && line.back() == '\\';
}

/// Joins the physical lines of one logical line after another, in storage that it uses again.
class LogicalLine {
public:
    /// The logical line that begins with `line`: `line` itself where it is not continued, else a
    /// view of the joined text that lives until the next call. Every final backslash is dropped,
    /// and so are the leading blanks of every line but the first.
    ///
    /// `next` hands out the physical lines behind `line`, one a call: `bool(std::string_view&)`,
    /// false where there is none, which ends the logical line.
    template <typename Next>
    std::string_view join(std::string_view line, Next next) {
        if (!isContinued(line)) return line;
        text.assign(line.substr(0, line.size() - 1));
        while (next(line)) {
            const bool continued = isContinued(line);
            if (continued) line.remove_suffix(1);
            text += withoutLeadingBlanks(line);
            if (!continued) break;
        }
        return text;
    }

private:
    std::string text;
};

}  // namespace kiv::detail
