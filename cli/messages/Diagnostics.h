#pragma once

#include <kiv/KDXText.h>

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "base/Settings.h"

namespace kdx {

/// Where a byte stands, for a message.
struct Place {
    std::size_t line = 0;       ///< counted from 1; 0 means the file as a whole
    std::size_t column = 0;     ///< in bytes, counted from 1
    std::string_view lineText;  ///< the whole physical line
};

/// The same for a place in a text without a byte order mark. The text must outlive it.
Place placeIn(std::string_view text, const kiv::KDXPlace& place);

enum class Severity { error, warning, note };

/// Something to tell the user about one place of one file.
struct Problem {
    Severity severity = Severity::error;
    std::string_view rule;  ///< a short fixed name, for programs that read the diagnostics
    Place place;
    std::string text;
    std::optional<Place> related = {};  ///< another place that the text speaks of
};

enum class Format {
    text,    ///< for people
    json,    ///< an object on a line
    github,  ///< what GitHub shows beside the line of a change
};

/// How problems are shown.
struct MessageStyle {
    Format format = Format::text;
    bool color = false;
};

/// The style of the standard error stream.
MessageStyle errorStyle(const Settings& settings);

/// The style of the standard output.
MessageStyle outputStyle(const Settings& settings);

/// Appends a problem to `out`: for people
///
///     FILE:LINE:COLUMN: error: TEXT [RULE]
///     the line
///         ^
///
/// and a note on the related place, if there is one; or for programs. Without a line, the place is
/// FILE alone, and the rule is not shown.
void appendProblem(std::string& out, std::string_view file, const Problem& problem,
                   MessageStyle style);

/// The same in the style of the standard error stream.
void appendProblem(std::string& out, std::string_view file, const Problem& problem,
                   const Settings& settings);

/// The same for trouble with a file as a whole.
void appendTrouble(std::string& out, std::string_view file, std::string_view text,
                   const Settings& settings);

}  // namespace kdx
