#pragma once

#include <kiv/ArgumentTypes.h>
#include <kiv/KDXExport.h>

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace kiv {

/// Where a byte of a text stands. The end of a text has a place, too.
struct KDXPlace {
    std::size_t offset = 0;  ///< in bytes, from the beginning of the text
    std::size_t line = 1;    ///< from 1; a line ends behind its line feed
    std::size_t column = 1;  ///< in bytes, from 1; a byte order mark in front of a text counts 0
};

/// One replacement in a text: so many bytes from an offset on give way to other bytes.
struct KDXTextEdit {
    std::size_t offset = 0;  ///< in the text before any edit
    std::size_t length = 0;  ///< 0 for an insertion
    std::string replacement;
};

/// The text with all replacements made. They stand in the order of their offsets and do not
/// overlap; insertions at the same offset come out in their order.
///
///     applyEdits("gain = 1\n", {{7, 1, "10"}});  // "gain = 10\n"
///
/// @throws kiv::internal::error when the edits are out of order, overlap, or lie outside the text.
KIV_KDX_EXPORT std::string applyEdits(std::string_view text, const std::vector<KDXTextEdit>& edits);

/// The offset of the first byte that belongs to no UTF-8 character; npos when there is none.
KIV_KDX_EXPORT std::size_t findNoUtf8(std::string_view text) noexcept;

/// The text as a message may show it, on a terminal as well: with '?' in place of every control
/// character, those that turn the direction of writing included, and a blank in place of a tab.
/// What is no UTF-8 stays.
KIV_KDX_EXPORT std::string visibleText(std::string_view text);

// A null pointer, or 0, is no text: this does not compile.
template <typename Text, typename = detail::IfNoText<Text>>
std::string applyEdits(Text, const std::vector<KDXTextEdit>&) = delete;
template <typename Text, typename = detail::IfNoText<Text>>
std::size_t findNoUtf8(Text) = delete;
template <typename Text, typename = detail::IfNoText<Text>>
std::string visibleText(Text) = delete;

}  // namespace kiv
