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

using LineType = MiniKDXParser::lineType;

/// The kind of one line. The first `nameLength` bytes of the line are known to be name characters,
/// of which the first is no blank: they are not looked at again.
LineType classifyLine(std::string_view line, std::size_t nameLength = 0);

/// The name characters that a text begins with.
struct NameRun {
    std::size_t wordLength;  // up to the first space
    std::size_t length;
    char stop;  // the byte behind them, '\0' at the end of the text
};

/// The run at the beginning of the text, of which so many bytes are known to belong to it.
inline NameRun nameRun(std::string_view text, std::size_t length) {
    while (length < text.size() && isWordCharacter(text[length])) ++length;
    const std::size_t wordLength = length;
    while (length < text.size() && isNameCharacter(text[length])) ++length;
    return {wordLength, length, length < text.size() ? text[length] : '\0'};
}

/// Cuts line after line into its kind and its two halves, which are what
/// MiniKDXParser::determineLineType() gives: views of the line, or of the splitter where a name's
/// whitespace had to be simplified.
class LineSplitter {
public:
    // In the header, so that the walk over the lines takes it in: a fifth of its instructions.
    LineType split(std::string_view line) {
        const std::string_view text = withoutIndentation(line);
        const NameRun run = nameRun(text, 0);
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
