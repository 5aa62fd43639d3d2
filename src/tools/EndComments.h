#pragma once

#include <kiv/KDXFormatting.h>

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace kiv::detail {

/// The comments behind ENDs, as a style wants them: "# TYPE:NAME".
class EndComments {
public:
    explicit EndComments(KDXFormatting::Style::EndComments given) : style(given) {}

    /// Whether a comment may have to change; if not, nothing need be told of objects.
    bool mayChange() const { return style != KDXFormatting::Style::EndComments::unchanged; }

    /// An object opens.
    void open(std::string_view type, std::string_view name);

    /// The innermost open object closes with an END that has this comment, or none.
    /// @return the comment that it should have: `comment` itself where that may stay, else a text
    /// that lives until the next object opens.
    std::string_view close(std::string_view comment);

private:
    std::size_t lastEnd() const { return ends.empty() ? 0 : ends.back(); }
    std::string_view wanted(std::string_view comment, std::string_view naming) const;

    KDXFormatting::Style::EndComments style;
    std::string texts;              // of all open objects, one behind the other
    std::vector<std::size_t> ends;  // of each, in the texts
};

}  // namespace kiv::detail
