#pragma once

#include <kiv/ArgumentTypes.h>
#include <kiv/KDXExport.h>

#include <string>
#include <vector>

/// String functions. A blank is a space, tab, line feed, vertical tab, form feed or carriage
/// return, in every locale. All of them take time in proportion to their input and output, and
/// throw nothing but what an allocation throws.
namespace kiv::StringUtilities {

/// `text` with every `from`, found from left to right, replaced by `to`; inserted text is not
/// searched again. An empty `from` is never found.
KIV_KDX_EXPORT std::string replaceSubstring(const std::string& text, const std::string& from,
                                            const std::string& to);

/// `text` without the blanks at its two ends. Inner blanks stay.
KIV_KDX_EXPORT std::string removeWhitespace(const std::string& text);

/// `text` without the blanks at its two ends, and with every inner run of blanks made one space.
KIV_KDX_EXPORT std::string simplifyWhitespace(const std::string& text);

/// Cuts one `suffix` off the end of `text`.
/// @return whether `text` ended with it; if not, or if `suffix` is empty, `text` is unchanged.
KIV_KDX_EXPORT bool removeFromEnd(std::string& text, const std::string& suffix);

/// The pieces of `text` between separators, in order. A separator at the very end ends the last
/// piece and starts no further one; the empty text has no pieces.
///
///     stringToVector("a\n\nb\n", '\n');  // "a", "", "b"
KIV_KDX_EXPORT std::vector<std::string> stringToVector(const std::string& text, char separator);

/// The pieces of a continued line as one line: end to end, nothing between them, and every piece
/// after the first without its leading blanks.
KIV_KDX_EXPORT std::string vectorToOneLineString(const std::vector<std::string>& pieces);

// A null pointer, or 0, is no text: these do not compile.
template <typename Text, typename From, typename To, typename = detail::IfNoText<Text, From, To>>
std::string replaceSubstring(Text, From, To) = delete;
template <typename Text, typename = detail::IfNoText<Text>>
std::string removeWhitespace(Text) = delete;
template <typename Text, typename = detail::IfNoText<Text>>
std::string simplifyWhitespace(Text) = delete;
template <typename Suffix, typename = detail::IfNoText<Suffix>>
bool removeFromEnd(std::string&, Suffix) = delete;
template <typename Text, typename = detail::IfNoText<Text>>
std::vector<std::string> stringToVector(Text, char) = delete;

}  // namespace kiv::StringUtilities
