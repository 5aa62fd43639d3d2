#pragma once

#include <kiv/ArgumentTypes.h>
#include <kiv/KDXExport.h>
#include <kiv/StringMapMap.h>

#include <cstdint>
#include <string>

namespace kiv {

/// Writes a StringMapMap as KDX text, which KDXToStringMapMap reads back.
///
///     std::string text;
///     kiv::StringMapMapToKDX::convert({{"/Sample:s1", {{"gain", "10"}}}}, text);
///     // Sample: s1
///     //   gain = 10
///     // END # Sample:s1
///
/// Objects come in the order of KDXPath, an object's parameters before the objects inside it. An
/// object that is only on the way to another one is written without parameters. Of several keys
/// that are the same path ("/A" and "/A:A"), the first in byte order is written, the others are
/// left out with their parameters. Every '/' of a key is a level, one in a name too, and
/// indentation grows with depth: n levels make n * n blanks.
///
/// Names and values are written as they are. What KDX cannot carry is not guarded against: a line
/// feed, a '#' or a final backslash in a value, in a type or name a character that is no name
/// character.
class KIV_KDX_EXPORT StringMapMapToKDX {
public:
    /// How the text is laid out.
    struct KIV_KDX_EXPORT Format {
        Format();
        Format(std::int32_t indentWidth, bool spaceSeparators, bool commentEnds);

        /// Blanks for each nesting level, not negative.
        std::int32_t indentWidth = 2;
        /// Whether parameters are "NAME = VALUE" and objects "TYPE: NAME", or without the blanks.
        bool spaceSeparators = true;
        /// Whether an END is followed by a comment that names the object that it closes.
        bool commentEnds = true;
    };

    /// Appends the text of `map` to `out`.
    ///
    /// @param replacePath a path in the form of the keys. The line of the first object with exactly
    /// this path is preceded, indentation included, by the mark "&replace ". The empty path, or one
    /// that no object has, marks nothing.
    /// @param out is not cleared, and no line feed is put behind what it holds. It must be neither
    /// in `map` nor `replacePath`. If an exception is thrown, what was appended until then stays.
    ///
    /// @throws std::length_error when the indentation width is negative and there is an object.
    static void convert(const std::string& replacePath, const StringMapMap& map, std::string& out,
                        const Format& format = Format());

    /// The same without a mark.
    static void convert(const StringMapMap& map, std::string& out, const Format& format = Format());

    /// These do what convert() does. The object holds nothing.
    StringMapMapToKDX(const std::string& replacePath, const StringMapMap& map, std::string& out,
                      const Format& format = Format());
    StringMapMapToKDX(const StringMapMap& map, std::string& out, const Format& format = Format());

    // A null pointer, or 0, is no text: these do not compile.
    template <typename Path, typename = detail::IfNoText<Path>>
    static void convert(Path, const StringMapMap&, std::string&, const Format& = Format()) = delete;
    template <typename Path, typename = detail::IfNoText<Path>>
    StringMapMapToKDX(Path, const StringMapMap&, std::string&, const Format& = Format()) = delete;
};

}  // namespace kiv
