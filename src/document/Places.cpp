#include "document/Places.h"

#include "base/ByteOrderMark.h"
#include "base/LineEnd.h"
#include "document/Composition.h"

namespace kiv::detail {
namespace {

using Where = KDXDocument::Where;

constexpr const char* kMarkInFront =
    "A line would come to stand at the beginning that is then read as a byte order mark.";

/// The last of the blank lines that set comments at the head of the text apart; kNone without any.
/// A text that says nothing is all head.
Index endOfHead(const StatementTree& tree) {
    Index end = kNone;
    Index index = tree.at(kRoot).first;
    for (; index != kNone && !tree.isSaying(index); index = tree.at(index).next)
        if (!tree.at(index).isComment) end = index;
    return index == kNone ? tree.at(kRoot).last : end;
}

/// The last child, the END aside; kNone without any.
Index lastInside(const StatementTree& tree, Index parent) {
    const Index index = tree.at(parent).last;
    return parent != kRoot && tree.isEnd(index) ? tree.at(index).previous : index;
}

/// The last child that says something, the END aside; kNone without any.
Index lastSaying(const StatementTree& tree, Index parent) {
    Index index = lastInside(tree, parent);
    while (index != kNone && !tree.isSaying(index)) index = tree.at(index).previous;
    return index;
}

/// The child behind which the last statement of an object comes; of a text of comments alone, the
/// last of them.
Index lastChildToFollow(const StatementTree& tree, Index parent) {
    const Index last = lastSaying(tree, parent);
    return last == kNone && parent == kRoot ? tree.at(kRoot).last : last;
}

Spot spotBehind(const StatementTree& tree, Index index) {
    const Index parent = tree.at(index).parent;
    // Behind an END is behind its object.
    if (tree.isEnd(index) && parent != kRoot) return {tree.at(parent).parent, parent};
    return {parent, index};
}

Spot spotFor(const StatementTree& tree, Where::Side side, Index index) {
    if (side == Where::Side::first) return {index, index == kRoot ? endOfHead(tree) : kNone};
    if (side == Where::Side::last) return {index, lastChildToFollow(tree, index)};
    if (side == Where::Side::behind) return spotBehind(tree, index);
    return {tree.at(index).parent, tree.at(tree.firstOwned(index)).previous};
}

/// What came behind an object that is never closed would be in it.
void requireOpenSpot(const char* function, const StatementTree& tree, const Spot& spot) {
    const bool isBehindObject = spot.behind != kNone && tree.isObject(spot.behind);
    if (isBehindObject && !tree.isClosed(spot.behind)) refuseData(function, kNeverClosed);
}

}  // namespace

Index statementBefore(const StatementTree& tree, const Spot& spot) {
    return spot.behind == kNone ? spot.parent : tree.lastBelow(spot.behind);
}

Spot spotOf(const char* function, const KDXDocument::Impl& document, Where where) {
    const bool isInside = where.side == Where::Side::first || where.side == Where::Side::last;
    const Index index = isInside ? document.holderOf(function, where.node)
                                 : document.statementOf(function, where.node);
    const Spot spot = spotFor(document.tree, where.side, index);
    requireOpenSpot(function, document.tree, spot);
    return spot;
}

void requireNoMark(const char* function, const StatementTree& tree, std::string_view bytes) {
    if (tree.byteOrderMark().empty() && startsWithByteOrderMark(bytes))
        refuseData(function, kMarkInFront);
}

Spot spotForRemark(const char* function, const KDXDocument::Impl& document, Where where) {
    if (where.side != Where::Side::last) return spotOf(function, document, where);
    const Index object = document.holderOf(function, where.node);
    const Spot spot{object, lastInside(document.tree, object)};
    requireOpenSpot(function, document.tree, spot);
    return spot;
}

Spot lastSpotIn(const char* function, const StatementTree& tree, Index object) {
    const Spot spot = spotFor(tree, Where::Side::last, object);
    requireOpenSpot(function, tree, spot);
    return spot;
}

Spot spotForParameter(const StatementTree& tree, Index object) {
    Index index = lastSaying(tree, object);
    while (index != kNone && tree.kindOf(index) != MiniKDXParser::lineParameter)
        index = tree.at(index).previous;
    if (index != kNone) return {object, index};
    return spotFor(tree, Where::Side::first, object);
}

bool closeTextBefore(Change& change, const StatementTree& tree, const Spot& spot,
                     std::string_view lineEnd) {
    const Index before = statementBefore(tree, spot);
    if (before == kRoot) return false;
    const std::string_view bytes = tree.bytesOf(before);
    const bool lacksLineEnd = lineEndOf(bytes).empty();
    // This is quickly told, and only then whether it is the last statement.
    if (!lacksLineEnd && !mayBeOpen(bytes)) return false;
    if (tree.nextInText(before) != kNone) return false;
    const std::string whole = closed(bytes, lineEnd);
    if (whole.size() != bytes.size()) change.rewrite(before, whole);
    return lacksLineEnd;
}

std::string_view asLastOfText(std::string_view lines) {
    const std::string_view bare = withoutLineEnd(lines);
    return bare.empty() || mayBeOpen(bare) ? lines : bare;
}

void insertLines(Change& change, const StatementTree& tree, const Spot& spot,
                 std::string_view lines, std::string_view lineEnd) {
    const bool endsBare = closeTextBefore(change, tree, spot, lineEnd);
    change.insert(spot.parent, spot.behind, endsBare ? asLastOfText(lines) : lines);
}

}  // namespace kiv::detail
