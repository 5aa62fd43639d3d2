#include <algorithm>

#include "base/LineEnd.h"
#include "document/Composition.h"
#include "document/StatementReader.h"

namespace kiv::detail {
namespace {

using Part = KDXReader::Part;

// Statements of so many bytes are looked at, for the same reason as so many siblings.
constexpr std::size_t kLongestSample = 1000;

bool hasOnly(std::string_view text, std::string_view characters) {
    return text.find_first_not_of(characters) == std::string_view::npos;
}

/// Finds out how statements are laid out from some of them, the nearest first.
class Sampler {
public:
    Sampler(const StatementTree& givenTree, Layout& filledLayout)
        : tree(givenTree), layout(filledLayout) {}

    /// Looks at the children of an object around the one behind which something comes.
    void lookAround(Index object, Index behind) {
        Index index = behind;
        for (int i = 0; i < kLookAround && index != kNone; ++i, index = tree.at(index).previous)
            look(index);
        index = behind == kNone ? tree.at(object).first : tree.at(behind).next;
        for (int i = 0; i < kLookAround && index != kNone; ++i, index = tree.at(index).next)
            look(index);
    }

    bool hasIndentation = false;
    bool hasStep = false;

    void noteStep(std::string_view outer, std::string_view inner) {
        if (hasStep || inner.size() <= outer.size() || inner.substr(0, outer.size()) != outer)
            return;
        layout.step = inner.substr(outer.size());
        hasStep = true;
    }

private:
    void look(Index index) {
        const std::string_view bytes = tree.bytesOf(index);
        if (bytes.size() > kLongestSample) return;
        if (tree.at(index).kind == MiniKDXParser::lineParameter) lookAtParameter(bytes);
        if (tree.isObject(index)) lookAtObject(index, bytes);
    }

    void noteIndentation(std::string_view bytes) {
        if (!hasIndentation) layout.indentation = indentationOf(bytes);
        hasIndentation = true;
    }

    void lookAtParameter(std::string_view bytes) {
        noteIndentation(bytes);
        const StatementReader statement(bytes);
        const std::size_t nameEnd = statement.endOf(Part::first);
        const std::size_t equals = bytes.find('=', nameEnd);
        if (equalsColumn == 0) {
            equalsColumn = equals;
            firstNameEnd = nameEnd;
        } else if (equals == equalsColumn && nameEnd != firstNameEnd) {
            layout.equalsColumn = equals;
        }
        if (hasEquals || statement->second().empty()) return;
        const std::string_view separator =
            bytes.substr(nameEnd, statement.beginOf(Part::second) - nameEnd);
        if (!hasOnly(separator, " \t=")) return;
        layout.equals = separator;
        hasEquals = true;
    }

    void lookAtObject(Index index, std::string_view bytes) {
        noteIndentation(bytes);
        const Index child = tree.at(index).first;
        if (child != kNone && tree.kindOf(child) == MiniKDXParser::lineParameter)
            lookInto(index, bytes);
        const StatementReader statement(bytes);
        if (tree.isClosed(index)) lookAtEnd(tree.bytesOf(tree.at(index).last), statement);
        if (hasColon || statement->second().empty()) return;
        const std::size_t typeEnd = statement.endOf(Part::first);
        const std::string_view separator =
            bytes.substr(typeEnd, statement.beginOf(Part::second) - typeEnd);
        if (!hasOnly(separator, " \t:")) return;
        layout.colon = separator;
        hasColon = true;
    }

    void lookAtEnd(std::string_view bytes, const StatementReader& object) {
        if (bytes.size() > kLongestSample || hasEnd) return;
        hasEnd = true;
        layout.commentEnds =
            StatementReader(bytes)->comment() == endComment(object->first(), object->second());
    }

    /// What the first parameter of an object shows.
    void lookInto(Index object, std::string_view bytes) {
        const std::string_view inner = tree.bytesOf(tree.at(object).first);
        if (inner.size() > kLongestSample) return;
        noteStep(indentationOf(bytes), indentationOf(inner));
        if (!hasEquals) lookAtParameter(inner);
    }

    const StatementTree& tree;
    Layout& layout;
    bool hasEquals = false;
    bool hasColon = false;
    bool hasEnd = false;
    std::size_t equalsColumn = 0;
    std::size_t firstNameEnd = 0;
};

std::string lineEndNear(const StatementTree& tree, Index before) {
    const Index further = before == kRoot ? kRoot : tree.previousInText(before);
    for (const Index index : {before, tree.nextInText(before), further}) {
        if (index == kRoot) continue;
        const std::string_view bytes = tree.bytesOf(index);
        if (!lineEndOf(bytes).empty()) return std::string(lineEndOf(bytes));
    }
    return "\n";
}

}  // namespace

std::string_view indentationOf(std::string_view bytes) {
    const std::size_t blanks = std::min(bytes.find_first_not_of(" \t\v\f"), bytes.size());
    return bytes.substr(0, blanks);
}

Layout layoutAt(const StatementTree& tree, Index parent, Index behind) {
    Layout layout;
    layout.lineEnd = lineEndNear(tree, behind == kNone ? parent : tree.lastBelow(behind));
    Sampler sampler(tree, layout);
    sampler.lookAround(parent, behind);
    const bool hasSiblings = sampler.hasIndentation;
    if (parent == kRoot) return layout;

    const std::string_view outer = indentationOf(tree.bytesOf(parent));
    const Index grandparent = tree.at(parent).parent;
    if (hasSiblings) sampler.noteStep(outer, layout.indentation);
    if (grandparent != kRoot) sampler.noteStep(indentationOf(tree.bytesOf(grandparent)), outer);
    const std::size_t column = layout.equalsColumn;
    sampler.hasIndentation = true;
    sampler.lookAround(grandparent, parent);
    // The column of the siblings alone counts, and so do the blanks that others stand behind.
    if (layout.equalsColumn != column) layout.equals.replace(0, layout.equals.find('='), " ");
    layout.equalsColumn = column;
    if (!hasSiblings) layout.indentation = std::string(outer) + layout.step;
    return layout;
}

}  // namespace kiv::detail
