#pragma once

#include <kiv/ArgumentTypes.h>
#include <kiv/KDXExport.h>

#include <string>
#include <vector>

/// Tidies KDX text. No text is refused, and nothing is thrown but what an allocation throws. Time
/// is in proportion to input and output.
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

}  // namespace kiv::KDXFormatting
