#pragma once

#include <kiv/MiniKDXParser.h>

#include <cassert>
#include <cstddef>
#include <string>
#include <string_view>

#include "base/Blank.h"
#include "base/NameCharacter.h"
#include "base/Whitespace.h"
#include "parser/LineShape.h"
#include "parser/LineTrimming.h"

namespace kiv::detail {

// Every text here is the rest of a line, or a whole one, in a std::string: the byte behind it is a
// line feed or the NUL that ends the string. That is no name character, so that looking for the end
// of a name needs no look at the end of the text, which would be a third of its instructions.

using LineType = MiniKDXParser::lineType;

/// Whether the text is an END, at most with a space and a comment behind it, as writers write it.
inline bool isPlainEnd(std::string_view text, std::size_t nameLength) {
    if (nameLength != text.size() && text[nameLength] != '#') return false;
    const std::string_view name = text.substr(0, nameLength);
    return name == "END" || name == "END ";
}

/// The kind of a line, without leading blanks, that is neither an object nor a parameter and begins
/// with so many name characters.
LineType classifyOther(std::string_view text, std::size_t nameLength);

/// The kind of a line without leading blanks. The first `nameLength` bytes are known to be name
/// characters: they are not looked at again.
///
/// A name holds no '#', so that what ends it decides before anything is known of a comment.
inline LineType classifyText(std::string_view text, std::size_t nameLength = 0) {
    const char* end = text.data() + nameLength;
    while (isNameCharacter(*end)) ++end;
    if (*end == '=') return MiniKDXParser::lineParameter;
    if (*end == ':') return MiniKDXParser::lineObject;
    return classifyOther(text, static_cast<std::size_t>(end - text.data()));
}

/// A line's kind and its two halves, which are what MiniKDXParser::determineLineType() gives, and
/// the position of its first '#', its end when there is none.
struct LineParts {
    LineType kind;
    std::string_view first;
    std::string_view second;
    std::size_t hash;
};

/// Cuts line after line into its parts: views of the line, or of the splitter where a name's
/// whitespace had to be simplified.
class LineSplitter {
public:
    // Taken into the walk over the lines, where a call would be a fiftieth of its instructions.
    [[gnu::always_inline]] LineParts split(std::string_view line, const LineShape& shape) {
        assert(!isNameCharacter(*(line.data() + line.size())));
        const char* const begin = line.data();
        if (isBlank(begin[shape.spaces])) return splitBehindBlanks(line);
        return splitShaped(line, shape);
    }

private:
    [[gnu::always_inline]] LineParts splitShaped(std::string_view line, const LineShape& shape) {
        const char* const begin = line.data();
        const char stop = begin[shape.nameEnd];
        if (stop != '=' && stop != ':') {
            const std::string_view text = line.substr(shape.spaces);
            const std::size_t nameLength = shape.nameEnd - shape.spaces;
            // What most such lines are, without a call.
            if (isPlainEnd(text, nameLength)) return {MiniKDXParser::lineEnd, {}, {}, shape.hash};
            return splitOther(text, nameLength, shape.hash);
        }
        const std::string_view first = nameOf(line, shape);
        std::string_view second = line.substr(0, commentBegin(line, shape.hash));
        // A space behind the separator, as writers write it, without a loop.
        second.remove_prefix(shape.nameEnd + (begin[shape.nameEnd + 1] == ' ' ? 2 : 1));
        second = withoutOuterBlanks(second);
        if (stop == '=') return {MiniKDXParser::lineParameter, first, second, shape.hash};
        return {MiniKDXParser::lineObject, first, simplified(second, simplifiedSecond), shape.hash};
    }

    /// The run without blanks that carry no meaning.
    std::string_view nameOf(std::string_view line, const LineShape& shape) {
        const auto upTo = [&](std::size_t end) {
            return std::string_view(line.data() + shape.spaces, end - shape.spaces);
        };
        // One word, and a space behind it if any, is what most lines begin with.
        if (shape.nameEnd - shape.wordEnd <= 1) return upTo(shape.wordEnd);
        return simplified(withoutTrailingBlanks(upTo(shape.nameEnd)), simplifiedFirst);
    }

    /// The same as split(), for a line that begins with other blanks than spaces.
    LineParts splitBehindBlanks(std::string_view line);

    /// The same for what is neither an object nor a parameter.
    static LineParts splitOther(std::string_view text, std::size_t nameLength, std::size_t hash);

    std::string simplifiedFirst;
    std::string simplifiedSecond;
};

}  // namespace kiv::detail
