// A text, laid out anew: every statement means what it meant, no comment is lost, and formatting
// once more changes nothing. A text with a line that is no KDX is refused.

#include <kiv/KDXFormatting.h>
#include <kiv/KDXReader.h>

#include "Support.h"

namespace {

using kiv::KDXReader;
using kiv::MiniKDXParser;
using kiv::KDXFormatting::formatKDX;
using kiv::KDXFormatting::Style;

/// A statement that says something.
struct Statement {
    MiniKDXParser::lineType kind;
    std::string first;  // of an action or a verbatim line, the text
    std::string second;
    std::string comment;
    std::size_t depth;

    bool operator==(const Statement& other) const {
        return kind == other.kind && first == other.first && second == other.second &&
               comment == other.comment && depth == other.depth;
    }
};

std::string trimmed(std::string_view text) {
    return std::string(text.substr(0, text.find_last_not_of(" \t\n\v\f\r") + 1));
}

std::vector<Statement> statementsOf(std::string_view text, bool withEndComments) {
    std::vector<Statement> statements;
    for (KDXReader reader(text); reader.next();) {
        const bool isEnd = reader.kind() == MiniKDXParser::lineEnd;
        const bool hasHalves = reader.kind() == MiniKDXParser::lineObject ||
                               reader.kind() == MiniKDXParser::lineParameter;
        const std::string comment(isEnd && !withEndComments ? "" : reader.comment());
        if (reader.kind() == MiniKDXParser::lineBlank && comment.empty()) continue;
        statements.push_back({reader.kind(), trimmed(hasHalves ? reader.first() : reader.text()),
                              std::string(reader.second()), comment, reader.depth()});
    }
    return statements;
}

bool isKdx(std::string_view text) {
    KDXReader reader(text);
    while (reader.next())
        if (reader.kind() == MiniKDXParser::lineUnrecognised) return false;
    return true;
}

std::vector<Style> styles() {
    Style plain;
    Style tight;
    tight.indentWidth = 0;
    tight.blankLines = 0;
    tight.separators = Style::Separators::tight;
    tight.endComments = Style::EndComments::removed;
    Style wide;
    wide.indentWidth = 5;
    wide.deepestLevel = 1;
    wide.blankLines = 3;
    wide.endComments = Style::EndComments::added;
    Style loose;
    loose.separators = Style::Separators::unchanged;
    loose.endComments = Style::EndComments::added;
    return {plain, tight, wide, loose};
}

void requireFormatted(std::string_view text, const Style& style) {
    const bool keepsComments = style.endComments == Style::EndComments::unchanged;
    const std::string formatted = formatKDX(text, style);
    fuzz::require(statementsOf(text, keepsComments) == statementsOf(formatted, keepsComments),
                  "every statement means what it meant");
    fuzz::require(formatKDX(formatted, style) == formatted, "once formatted, a text stays");
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    // On the heap and of exactly this size, so that a look behind it is noticed.
    const std::vector<char> bytes(data, data + size);
    const std::string_view text(bytes.data(), bytes.size());
    const bool refused = !messageOf([text] { formatKDX(text); }).empty();
    fuzz::require(refused == !isKdx(text), "a text is refused when it is no KDX");
    if (refused) return 0;
    for (const Style& style : styles()) requireFormatted(text, style);
    return 0;
}
