#include "Meaning.h"

#include <kiv/MiniKDXParser.h>

#include <string>

#include "Blank.h"
#include "LogicalLines.h"

namespace kdx {
namespace {

using kiv::MiniKDXParser;

/// Reads a text from one line that says something to the next.
class Statements {
public:
    explicit Statements(std::string_view text) : lines(text) {}

    bool next() {
        while (lines.next()) {
            type = MiniKDXParser::determineLineType(lines.text(), first, second);
            if (type == MiniKDXParser::lineVerbatim || type == MiniKDXParser::lineAction)
                first = withoutOuterBlanks(withoutComment());
            if (type != MiniKDXParser::lineBlank) return true;
        }
        return false;
    }

    bool saysTheSame(const Statements& other) const {
        return type == other.type && first == other.first && second == other.second;
    }

private:
    std::string_view withoutComment() const {
        if (type == MiniKDXParser::lineVerbatim) return lines.text();
        return std::string_view(lines.text()).substr(0, findComment(lines.text()));
    }

    LogicalLines lines;
    MiniKDXParser::lineType type = MiniKDXParser::lineBlank;
    std::string first;
    std::string second;
};

}  // namespace

bool sameMeaning(std::string_view before, std::string_view after) {
    Statements a(before);
    Statements b(after);
    while (a.next())
        if (!b.next() || !a.saysTheSame(b)) return false;
    return !b.next();
}

}  // namespace kdx
