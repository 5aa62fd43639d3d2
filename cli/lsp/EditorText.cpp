#include "EditorText.h"
#include "text/ShownText.h"

#include <algorithm>
#include <utility>

namespace kdx::lsp {
namespace {

/// How many UTF-16 units the character has that begins with this byte; 0 in the middle of one.
std::size_t unitsOf(char c) {
    if (continuesCharacter(c)) return 0;
    return static_cast<unsigned char>(c) >= 0xF0 ? 2 : 1;
}

}  // namespace

EditorText::EditorText(std::string givenText)
    : content(std::move(givenText)), lines(linesIn(0, content.size())) {}

std::size_t EditorText::offsetOf(const Position& position) const {
    if (position.line >= lines.size()) return content.size();
    const std::size_t end = lineEnd(position.line);
    std::size_t offset = lines[position.line];
    for (std::size_t units = 0; offset < end; ++offset) {
        units += unitsOf(content[offset]);
        if (units > position.character) break;
    }
    return offset;
}

Position EditorText::positionOf(std::size_t offset) const {
    if (isInsideLineEnd(offset)) --offset;
    const auto behind = std::upper_bound(lines.begin(), lines.end(), offset);
    const auto line = static_cast<std::size_t>(behind - lines.begin()) - 1;
    if (line != last.line || offset < lastOffset) {
        lastOffset = lines[line];
        last = {line, 0};
    }
    for (; lastOffset < offset; ++lastOffset) last.character += unitsOf(content[lastOffset]);
    return last;
}

std::size_t EditorText::lineBegin(std::size_t offset) const {
    return *(std::upper_bound(lines.begin(), lines.end(), offset) - 1);
}

bool EditorText::isInsideLineEnd(std::size_t offset) const {
    return offset > 0 && offset < content.size() && content[offset - 1] == '\r' &&
           content[offset] == '\n';
}

void EditorText::replace(Span span, std::string_view replacement) {
    const auto [begin, end] = std::minmax(span.begin, span.end);
    const auto firstLost = std::lower_bound(lines.begin(), lines.end(), begin);
    const auto firstKept = std::upper_bound(firstLost, lines.end(), end);
    for (auto line = firstKept; line != lines.end(); ++line)
        *line = *line - end + begin + replacement.size();
    content.replace(begin, end - begin, replacement);
    const std::vector<std::size_t> found = linesIn(begin, begin + replacement.size());
    const auto gap = lines.erase(firstLost, firstKept);
    lines.insert(gap, found.begin(), found.end());
    lastOffset = 0;
    last = {};
}

/// The bytes on both sides of an offset decide.
bool EditorText::isLineBegin(std::size_t offset) const {
    if (offset == 0 || content[offset - 1] == '\n') return true;
    return content[offset - 1] == '\r' && (offset == content.size() || content[offset] != '\n');
}

std::size_t EditorText::lineEnd(std::size_t line) const {
    if (line + 1 == lines.size()) return content.size();
    std::size_t end = lines[line + 1] - 1;
    if (content[end] == '\n' && end > lines[line] && content[end - 1] == '\r') --end;
    return end;
}

std::vector<std::size_t> EditorText::linesIn(std::size_t begin, std::size_t end) const {
    std::vector<std::size_t> found;
    for (std::size_t offset = begin; offset <= end; ++offset)
        if (isLineBegin(offset)) found.push_back(offset);
    return found;
}

}  // namespace kdx::lsp
