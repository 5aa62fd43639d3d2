#pragma once

#include <kiv/KDXFormatting.h>

#include <cstddef>
#include <string>
#include <string_view>

#include "base/Blank.h"

namespace kiv::detail {

/// How a line, without outer blanks, is to stand: a name and a separator where they have to change,
/// and the rest.
struct LineLayout {
    std::string_view name;
    std::string_view separator;
    std::string_view rest;

    void appendTo(std::string& text) const { text.append(name).append(separator).append(rest); }
};

/// The layout of a line that stays as it is.
inline LineLayout unchanged(std::string_view line) {
    return {{}, {}, line};
}

/// Divides the lines of objects and parameters at their separators, and spaces these.
class LineDivider {
public:
    explicit LineDivider(KDXFormatting::Style::Separators style);

    /// The layout of a line, without outer blanks, whose first half ends at `separator`.
    LineLayout divide(std::string_view line, std::size_t separator) const {
        if (!divides) return unchanged(line);
        const Spacing& spacing = line[separator] == ':' ? object : parameter;
        const std::string_view name = withoutTrailingBlanks({line.data(), separator});
        const std::string_view behind(line.data() + separator + 1, line.size() - separator - 1);
        std::string_view between = spacing.between;
        std::string_view rest = withoutLeadingBlanks(behind);
        if (rest.empty() || rest.front() == '#') {  // the gap before a comment stays
            between = spacing.bare;
            rest = behind;
        }
        if (name.empty() && between.front() == ' ') between.remove_prefix(1);
        const char* const nameEnd = name.data() + name.size();
        // Inside stands the separator: the first and the last byte tell what is around it.
        if (rest.data() == nameEnd + between.size() && *nameEnd == between.front() &&
            *(rest.data() - 1) == between.back())
            return unchanged(line);
        return {name, between, rest};
    }

private:
    struct Spacing {
        std::string_view between;  // two halves
        std::string_view bare;     // without a second half
    };

    bool divides;
    Spacing object;
    Spacing parameter;
};

}  // namespace kiv::detail
