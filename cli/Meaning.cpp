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

    /// Goes on to the next logical line, whatever it is. @return false when there is none.
    bool nextLine() { return lines.next(); }
    std::string_view bareLine() const { return withoutOuterBlanks(lines.text()); }

    /// Reads this line, or the first behind it that says something. @return false when none does.
    bool read() {
        do {
            type = lines.classify(first, second);
            if (type == MiniKDXParser::lineVerbatim || type == MiniKDXParser::lineAction)
                first = withoutOuterBlanks(withoutComment());
            if (type != MiniKDXParser::lineBlank) return true;
        } while (lines.next());
        return false;
    }

    bool saysTheSame(const Statements& other) const {
        return type == other.type && first == other.first && second == other.second;
    }

private:
    std::string_view withoutComment() const {
        if (type == MiniKDXParser::lineVerbatim) return lines.text();
        return lines.text().substr(0, findComment(lines.text()));
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
    for (;;) {
        bool inA = a.nextLine();
        bool inB = b.nextLine();
        if (inA && inB && a.bareLine() == b.bareLine()) continue;
        inA = inA && a.read();
        inB = inB && b.read();
        if (!inA || !inB) return inA == inB;
        if (!a.saysTheSame(b)) return false;
    }
}

}  // namespace kdx
