#include <kiv/KDXFormatting.h>
#include <kiv/MiniKDXParser.h>

#include <string_view>

#include "base/Blank.h"
#include "parser/LineShape.h"
#include "parser/LineTrimming.h"
#include "parser/LogicalLine.h"
#include "parser/UndecidedLine.h"

namespace kiv::KDXFormatting {
namespace {

using lineType = MiniKDXParser::lineType;

constexpr std::size_t kStep = 2;

/// Re-indents line after line.
class Indenter {
public:
    explicit Indenter(std::size_t lineCount) { indented.reserve(lineCount); }

    void add(std::string_view line) {
        current = line;
        const detail::LineShape shape = detail::shapeOf(line, line.size());
        spaces = shape.spaces;
        const std::string_view stripped = detail::withoutLeadingBlanks(line.substr(spaces));
        if (continuing) return addContinuation(stripped, stripped.size() < line.size());
        kind = logicalLine.begin(stripped, shape.nameEnd - spaces,
                                 detail::holdsBackslash(line, line.size()));
        addToOpen(stripped, false);
        continuing = logicalLine.isContinued();
    }

    std::vector<std::string> take() { return std::move(indented); }

private:
    void addContinuation(std::string_view stripped, bool spaced) {
        if (kind != MiniKDXParser::lineUnrecognised) {
            addToKnown(stripped, spaced);
            continuing = detail::isContinued(current);
        } else {
            kind = logicalLine.add(stripped, spaced);
            addToOpen(stripped, spaced);
            continuing = logicalLine.isContinued();
        }
        if (!continuing) logicalLine.clear();
    }

    /// A continuation of a line whose kind is known.
    void addToKnown(std::string_view stripped, bool spaced) {
        const bool free = kind == MiniKDXParser::lineVerbatim ||
                          kind == MiniKDXParser::lineAction || stripped.empty() ||
                          stripped.front() == '\\' || stripped.front() == '#';
        write(free ? margin(spaced) : level + kStep, stripped);
    }

    /// A line that begins a logical line, or continues one whose kind was open until now.
    void addToOpen(std::string_view stripped, bool spaced) {
        switch (kind) {
            case MiniKDXParser::lineUnrecognised: addUnrecognised(stripped, spaced); return;
            case MiniKDXParser::lineVerbatim:
            case MiniKDXParser::lineAction: write(0, stripped); return;
            case MiniKDXParser::lineBlank: write(margin(spaced), stripped); return;
            case MiniKDXParser::lineObject:
                write(objectIndentation(spaced), stripped);
                level += kStep;
                return;
            case MiniKDXParser::lineParameter:
                write(continuing ? level + kStep : level, stripped);
                return;
            case MiniKDXParser::lineEnd:
                level -= level == 0 ? 0 : kStep;
                write(level, stripped);
                return;
        }
    }

    void addUnrecognised(std::string_view stripped, bool spaced) {
        if (stripped.empty() || stripped.front() == '\\') return;
        if (stripped.front() == '#') return write(margin(spaced), stripped);
        write(continuing && !spaced ? 0 : level, stripped);
    }

    std::size_t objectIndentation(bool spaced) const {
        if (!continuing) return level;
        if (!spaced) return 0;
        return level == 0 ? kStep : level;
    }

    /// Where a line stands whose indentation has nothing to do with the nesting.
    static std::size_t margin(bool spaced) { return spaced ? kStep : 0; }

    void write(std::size_t indentation, std::string_view stripped) {
        const std::size_t length = indentation + stripped.size();
        if (length == current.size() && spaces == indentation) {  // as in a text that is tidy
            indented.emplace_back(current);
            return;
        }
        std::string& line = indented.emplace_back(length, ' ');
        stripped.copy(line.data() + indentation, stripped.size());
    }

    std::vector<std::string> indented;
    std::string_view current;  // the physical line
    std::size_t spaces = 0;    // in front of it
    std::size_t level = 0;
    bool continuing = false;
    lineType kind = MiniKDXParser::lineUnrecognised;
    detail::UndecidedLine logicalLine;
};

}  // namespace

std::string removeComment(const std::string& line) {
    return std::string(detail::removeComment(line));
}

std::vector<std::string> indentKDX(const std::vector<std::string>& lines) {
    Indenter indenter(lines.size());
    for (const std::string& line : lines) indenter.add(line);
    return indenter.take();
}

}  // namespace kiv::KDXFormatting
