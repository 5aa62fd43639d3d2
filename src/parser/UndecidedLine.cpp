#include "parser/UndecidedLine.h"

#include <algorithm>

#include "base/Blank.h"
#include "base/NameCharacter.h"
#include "parser/LineTrimming.h"
#include "parser/LogicalLine.h"

// While the kind is open, the text holds no '#' and begins with a name character or, for good,
// with something that no line begins with. So a further physical line can only decide the kind
// where the text so far is all name characters, and then the search goes on behind them; or where
// it is an END that had a backslash behind blanks, and nothing or a comment follows.

namespace kiv::detail {
namespace {

bool isNothingOrComment(std::string_view line) {
    return line.empty() || line.front() == '#';
}

}  // namespace

MiniKDXParser::lineType UndecidedLine::add(std::string_view line, bool spaced) {
    if (text.empty()) return begin(line, 0, line.find('\\') != std::string_view::npos);
    const std::size_t lengthBefore = text.size();
    const bool canDecide = nameLength == lengthBefore ||
                           (isNothingOrComment(line) && withoutTrailingBlanks(text) == "END");
    if (spaced) text += ' ';
    text += line;
    const auto kind = canDecide ? classifyText(text, nameLength) : MiniKDXParser::lineUnrecognised;
    text.resize(std::min(text.find('#', lengthBefore), text.size()));
    text.resize(withoutTrailingBlanks(text).size());
    dropFinalBackslash();
    return kind;
}

void UndecidedLine::keepContinued(std::string_view line, MiniKDXParser::lineType kind) {
    const std::string_view commentless = removeComment(line);
    continued = detail::isContinued(commentless);
    if (!continued || kind != MiniKDXParser::lineUnrecognised) return;
    text = commentless;
    dropFinalBackslash();
}

void UndecidedLine::dropFinalBackslash() {
    continued = detail::isContinued(text);
    if (continued) text.pop_back();
    nameLength = std::min(nameLength, text.size());
    while (nameLength < text.size() && isNameCharacter(text[nameLength])) ++nameLength;
}

}  // namespace kiv::detail
