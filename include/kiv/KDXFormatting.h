#pragma once

#include <kiv/ArgumentTypes.h>
#include <kiv/KDXExport.h>

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

/// Tidies KDX text. Where a function does not say otherwise, no text is refused and nothing is
/// thrown but what an allocation throws. Time is in proportion to input and output.
namespace kiv::KDXFormatting {

/// A line without its comment and without outer blanks. A line that begins with '!' or '$' has no
/// comment; in every other the first '#' begins it, also one behind a backslash.
///
///     removeComment("  gain = 10 # dB");  // gain = 10
KIV_KDX_EXPORT std::string removeComment(const std::string& line);

// A null pointer, or 0, is no text: this does not compile.
template <typename Line, typename = detail::IfNoText<Line>>
std::string removeComment(Line) = delete;

/// The lines with their leading blanks replaced by two for each object around them.
///
///     indentKDX({"Sample: s1", "gain = 10", "END"});  // "Sample: s1", "  gain = 10", "END"
///
/// Continuation lines stand deeper than the line that they continue; comments that stand alone,
/// actions and verbatim lines stand at the margin. Comments and blank lines stay, and so does
/// whatever stands at a line's end.
///
/// There is one line for each line of the input, but for two kinds, which are left out: a line that
/// begins with a backslash and continues nothing, and a continuation that is blank or begins with a
/// backslash while it is not yet clear what its line is. A reader may accept such a line all the
/// same: a lone backslash before or within a line that is KDX without it, or the line behind a
/// comment that ends in a backslash, which continues the comment for a reader, but not here.
///
/// The text means to a reader what it meant before, leading blanks of actions aside, and indenting
/// it once more changes nothing, provided that every line of it is KDX and none was left out. The
/// exception to the latter is an END that is itself cut in two by a continuation.
///
/// Indentation grows with depth: n objects inside one another make n * n blanks. Here, unlike for
/// a reader, an object may also be a line that continues a comment.
KIV_KDX_EXPORT std::vector<std::string> indentKDX(const std::vector<std::string>& lines);

/// How formatKDX() lays a text out.
struct Style {
    /// How an object's type and name, and a parameter's name and value, are separated.
    enum class Separators {
        spaced,     ///< "TYPE: NAME" and "NAME = VALUE"
        tight,      ///< "TYPE:NAME" and "NAME=VALUE"
        unchanged,  ///< as they are
    };

    /// What happens to comments behind ENDs that name the object: "END # TYPE:NAME".
    enum class EndComments {
        unchanged,
        added,    ///< to every END that closes an object and has no comment
        removed,  ///< where the comment says nothing else
    };

    std::size_t indentWidth = 2;    ///< blanks for each level
    std::size_t deepestLevel = 64;  ///< whatever lies deeper is indented as this level is
    std::size_t blankLines = 1;     ///< so many in a row are kept
    Separators separators = Separators::spaced;
    EndComments endComments = EndComments::unchanged;
};

/// The text laid out anew. It means to a reader what it meant before: the same objects,
/// parameters, ENDs, actions, verbatim lines and comments, in the same order; outer blanks of
/// actions and verbatim lines aside.
///
///     formatKDX("Sample:s1\ngain=10 # dB\nEND");  // "Sample: s1\n  gain = 10 # dB\nEND\n"
///
/// Everything stands at the level of the object around it, comments, actions and verbatim lines
/// included; an END stands under the beginning of its object. Lines that continue another one stand
/// one level deeper than it does. Blanks at line ends go, apart from those behind a backslash. Of
/// blank lines in a row, so many stay as the style says, and none at the beginning and at the end.
/// Names, values and the gap before a comment stay as they are.
///
/// A line keeps its kind of line end, LF or CR LF. A last line without one gets the kind of the
/// line before, LF if there is none. A byte order mark stays.
///
/// Whatever holds a backslash is laid out only where it reads back as the same; otherwise its bytes
/// stay. That is so for a line at the very end that is continued by nothing; no END gets a comment
/// that would end in a backslash. The comment of an END that is itself continued stays, too.
///
/// Formatting once more, in the same style, changes nothing. The text may have missing ENDs, and
/// ENDs that close nothing.
///
/// @throws kiv::data::invalid when a line is no KDX: the message says where, and what is awaited
/// there.
KIV_KDX_EXPORT std::string formatKDX(std::string_view text, const Style& style = {});
template <typename Text, typename = detail::IfNoText<Text>>
std::string formatKDX(Text, const Style& = {}) = delete;

}  // namespace kiv::KDXFormatting
