#pragma once

#include <kiv/MiniKDXParser.h>

#include <cstddef>
#include <string>
#include <string_view>

#include "external/Blank.h"
#include "external/Whitespace.h"
#include "parser/LineTrimming.h"
#include "parser/NameCharacter.h"

namespace kiv::detail {

// Every text here is the rest of a line, or a whole one, in a std::string: the byte behind it is a
// line feed or the NUL that ends the string. That is no name character, so that looking for the end
// of a name needs no look at the end of the text, which would be a third of its instructions.

using LineType = MiniKDXParser::lineType;

/// The name characters that a text begins with.
struct NameRun {
    std::size_t wordLength;  // up to the first space
    std::size_t length;
    char stop;  // the byte behind them, which may be the one behind the text
};

/// The run at the beginning of the text.
inline NameRun nameRun(std::string_view text) {
    const char* end = text.data();
    while (isWordCharacter(*end)) ++end;
    const char* const wordEnd = end;
    while (isNameCharacter(*end)) ++end;
    return {static_cast<std::size_t>(wordEnd - text.data()),
            static_cast<std::size_t>(end - text.data()), *end};
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

/// Cuts line after line into its kind and its two halves, which are what
/// MiniKDXParser::determineLineType() gives: views of the line, or of the splitter where a name's
/// whitespace had to be simplified.
class LineSplitter {
public:
    // Taken into the walk over the lines, where a call would be a fiftieth of its instructions.
    [[gnu::always_inline]] LineType split(std::string_view line) {
        const std::string_view text = withoutIndentation(line);
        const NameRun run = nameRun(text);
        if (run.stop != '=' && run.stop != ':') return splitOther(text, run.length);
        firstHalf = nameOf(text, run);
        secondHalf = withoutOuterBlanks(withoutComment(text.substr(run.length + 1), 0));
        if (run.stop == '=') return MiniKDXParser::lineParameter;
        secondHalf = simplified(secondHalf, simplifiedSecond);
        return MiniKDXParser::lineObject;
    }

    std::string_view first() const { return firstHalf; }
    std::string_view second() const { return secondHalf; }

private:
    /// The run without blanks that carry no meaning.
    std::string_view nameOf(std::string_view text, const NameRun& run) {
        // One word, and a space behind it if any, is what most lines begin with.
        if (run.length - run.wordLength <= 1) return text.substr(0, run.wordLength);
        return simplified(withoutTrailingBlanks(text.substr(0, run.length)), simplifiedFirst);
    }

    LineType splitOther(std::string_view text, std::size_t nameLength);

    std::string_view firstHalf;
    std::string_view secondHalf;
    std::string simplifiedFirst;
    std::string simplifiedSecond;
};

}  // namespace kiv::detail
