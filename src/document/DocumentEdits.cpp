#include <utility>

#include "base/ByteOrderMark.h"
#include "base/ObjectName.h"
#include "document/Change.h"
#include "document/Composition.h"
#include "document/DocumentImpl.h"
#include "document/PathWalk.h"
#include "document/Places.h"
#include "document/Rewriting.h"

namespace kiv {
namespace {

using detail::Change;
using detail::Index;
using detail::kNone;
using detail::kRoot;
using detail::Layout;
using detail::PathWalk;
using detail::refuseCall;
using detail::refuseData;
using detail::Spot;
using detail::StatementTree;
using Node = KDXDocument::Node;
using Where = KDXDocument::Where;

constexpr const char* kWrongKind = "A statement of this kind has no such part.";
constexpr const char* kNoEnd = "The END of an object goes with the object.";
constexpr const char* kRootStays = "The root is no statement.";
constexpr const char* kInsideItself = "A statement cannot be put inside itself.";
constexpr const char* kNoPath = "Every step needs a type and a name.";
constexpr const char* kNoKdx = "A line of the text is no KDX.";
constexpr const char* kTooManyEnds = "The text has an END that closes nothing.";
constexpr const char* kTooFewEnds = "The text has an object that is never closed.";

/// Adds the lines that `compose` makes for a layout. @return the first statement.
template <typename Compose>
Node add(KDXDocument::Impl& document, const Spot& spot, Compose compose) {
    const Layout layout = detail::layoutAt(document.tree, spot.parent, spot.behind);
    Change change(document.tree);
    detail::insertLines(change, document.tree, spot, compose(layout), layout.lineEnd);
    return document.nodeOf(change.commit());
}

/// A line with a byte order mark is none of KDX, but in a text of its own it would be another one.
void refuseMark(const char* function, std::string_view text) {
    if (detail::startsWithByteOrderMark(text)) refuseData(function, kNoKdx);
}

void requireBalanced(const char* function, const std::vector<detail::Statement>& fragment) {
    for (std::size_t i = 1; i < fragment.size(); ++i) {
        const detail::Statement& statement = fragment[i];
        if (statement.kind == MiniKDXParser::lineUnrecognised) refuseData(function, kNoKdx);
        if (statement.kind == MiniKDXParser::lineEnd && statement.parent == kRoot)
            refuseData(function, kTooManyEnds);
        if (statement.kind == MiniKDXParser::lineObject &&
            fragment[statement.last].kind != MiniKDXParser::lineEnd)
            refuseData(function, kTooFewEnds);
    }
}

// ---- Moving.

/// What is moved or removed with a statement: the comments that belong to it, and all that is in
/// it.
struct Block {
    Index first;
    Index last;  // the statement itself
};

Block blockOf(const StatementTree& tree, Index index) {
    return {tree.firstOwned(index), index};
}

/// What goes must not leave a line at the beginning of the text that becomes a byte order mark. The
/// blocks stand in text order.
void requireRemovable(const char* function, const StatementTree& tree,
                      const std::vector<Block>& blocks) {
    Index first = tree.nextInText(kRoot);
    for (const Block& block : blocks)
        if (first == block.first) first = tree.nextBehind(block.last);
    if (first != kNone && first != tree.nextInText(kRoot))
        detail::requireNoMark(function, tree, tree.bytesOf(first));
}

void requireMovable(const char* function, const StatementTree& tree, Index index) {
    if (tree.isEnd(index)) refuseCall(function, kNoEnd);
    if (tree.isObject(index) && !tree.isClosed(index)) refuseData(function, detail::kNeverClosed);
}

bool isInside(const StatementTree& tree, Index index, Index outer) {
    while (index != kRoot && index != outer) index = tree.at(index).parent;
    return index == outer;
}

/// Removes statements with their blocks. They stand in text order, and none inside another.
void removeAll(const char* function, StatementTree& tree, const std::vector<Index>& statements) {
    std::vector<Block> blocks;
    blocks.reserve(statements.size());
    for (const Index index : statements) blocks.push_back(blockOf(tree, index));
    requireRemovable(function, tree, blocks);
    for (const Block& block : blocks) tree.remove(block.first, block.last);
}

/// Whether a block already stands where it is to be put.
bool isThere(const StatementTree& tree, const Block& block, const Spot& spot) {
    if (spot.parent != tree.at(block.first).parent) return false;
    if (spot.behind == tree.at(block.first).previous) return true;
    Index index = block.first;
    while (index != block.last && index != spot.behind) index = tree.at(index).next;
    return index == spot.behind;
}

/// Visits the statements of a block, each with its bytes as they have to be in a layout.
template <typename Visit>
void layOut(const StatementTree& tree, const Block& block, const Layout& layout, Visit visit) {
    const std::string indentation(detail::indentationOf(tree.bytesOf(block.last)));
    const Index end = tree.nextBehind(block.last);
    for (Index i = block.first; i != end; i = tree.nextInText(i))
        visit(i, detail::relaid(tree.bytesOf(i), indentation, layout));
}

void moveBlock(const char* function, StatementTree& tree, const Block& block, const Spot& spot) {
    const Layout layout = detail::layoutAt(tree, spot.parent, spot.behind);
    requireRemovable(function, tree, {block});
    if (detail::statementBefore(tree, spot) == kRoot)
        detail::requireNoMark(function, tree, tree.bytesOf(block.first));
    Change change(tree);
    const bool endsBare = detail::closeTextBefore(change, tree, spot, layout.lineEnd);
    const Index last = tree.lastBelow(block.last);
    layOut(tree, block, layout, [&](Index index, std::string_view bytes) {
        if (endsBare && index == last) bytes = detail::asLastOfText(bytes);
        if (bytes != tree.bytesOf(index)) change.rewrite(index, bytes);
    });
    change.commit();
    tree.move(block.first, block.last, spot.parent, spot.behind);
}

// ---- Setting by path.

void requirePath(const char* function, const KDXSteps& path) {
    for (const KDXStep& step : path)
        if (step.anyDepth || !step.type || !step.name) refuseCall(function, kNoPath);
}

/// What of a path there is: the first object that fulfils the most of its steps, and the first
/// parameter of a name in objects that fulfil all.
struct Found {
    std::size_t steps = 0;
    Index object = kRoot;
    Index parameter = kNone;
};

Found find(const StatementTree& tree, const KDXSteps& path, std::string_view name) {
    Found found;
    PathWalk(tree, path).run([&](const PathWalk::Step& step) {
        if (step.steps > found.steps) {
            found.steps = step.steps;
            found.object = step.index;
        }
        if (step.isMatched && detail::isParameter(tree, step.index, name))
            found.parameter = step.index;
        return found.parameter == kNone;
    });
    return found;
}

/// A parameter with objects around it, one for each step.
std::string nestedParameter(const char* function, Layout layout, const KDXSteps& steps,
                            std::string_view name, std::string_view value) {
    std::string text;
    std::vector<std::string> ends;
    for (const KDXStep& step : steps) {
        text += detail::objectLine(function, layout, *step.type,
                                   detail::writtenName(*step.type, *step.name));
        ends.push_back(detail::endLine(layout, *step.type, *step.name));
        layout.indentation += layout.step;
        layout.equalsColumn = 0;
    }
    text += detail::parameterLine(function, layout, name, value);
    for (auto end = ends.rbegin(); end != ends.rend(); ++end) text += *end;
    return text;
}

}  // namespace

std::string writtenValue(std::string_view name, std::string_view value) {
    return detail::valueText("writtenValue", name, value);
}

Node KDXDocument::addParameter(Where where, std::string_view name, std::string_view value) {
    return add(*impl, detail::spotOf("addParameter", *impl, where), [&](const Layout& layout) {
        return detail::parameterLine("addParameter", layout, name, value);
    });
}

Node KDXDocument::addObject(Where where, std::string_view type, std::string_view name) {
    return add(*impl, detail::spotOf("addObject", *impl, where), [&](const Layout& layout) {
        return detail::objectLine("addObject", layout, type, name) +
               detail::endLine(layout, type, name);
    });
}

Node KDXDocument::addAction(Where where, std::string_view text) {
    return add(*impl, detail::spotOf("addAction", *impl, where),
               [&](const Layout& layout) { return detail::actionLine("addAction", layout, text); });
}

Node KDXDocument::addComment(Where where, std::string_view comment) {
    return add(*impl, detail::spotForRemark("addComment", *impl, where), [&](const Layout& layout) {
        return detail::commentLine("addComment", layout, comment);
    });
}

Node KDXDocument::addBlankLine(Where where) {
    return add(*impl, detail::spotForRemark("addBlankLine", *impl, where),
               [](const Layout& layout) { return layout.lineEnd; });
}

std::vector<Node> KDXDocument::addText(Where where, std::string_view text) {
    StatementTree& tree = impl->tree;
    const Spot spot = detail::spotOf("addText", *impl, where);
    text.remove_prefix(detail::byteOrderMarkLength(text));
    if (text.empty()) return {};
    refuseMark("addText", text);
    const Layout layout = detail::layoutAt(tree, spot.parent, spot.behind);
    // A copy: the text may be the source of a statement, whose bytes may move when others are
    // added.
    const std::string lines = detail::closed(text, layout.lineEnd);
    Change change(tree);
    detail::closeTextBefore(change, tree, spot, layout.lineEnd);
    change.insert(spot.parent, spot.behind, lines);
    requireBalanced("addText", change.insertedStatements());
    std::vector<Node> nodes;
    nodes.reserve(change.insertedStatements().size());
    const Index first = change.commit();
    const auto isAdded = [&](Index i) { return tree.at(i).serial == tree.at(first).serial; };
    for (Index i = first; i != kNone && isAdded(i); i = tree.at(i).next) impl->append(nodes, i);
    return nodes;
}

void KDXDocument::setValue(Node parameter, std::string_view value) {
    const Index index = impl->statementOf("setValue", parameter);
    if (impl->tree.kindOf(index) != MiniKDXParser::lineParameter)
        refuseCall("setValue", kWrongKind);
    detail::rewriteSecond("setValue", impl->tree, index, value);
}

void KDXDocument::setName(Node node, std::string_view name) {
    const Index index = impl->statementOf("setName", node);
    if (impl->tree.isObject(index))
        return detail::rewriteSecond("setName", impl->tree, index, name);
    if (impl->tree.kindOf(index) != MiniKDXParser::lineParameter) refuseCall("setName", kWrongKind);
    detail::rewriteFirst("setName", impl->tree, index, name);
}

void KDXDocument::setType(Node object, std::string_view type) {
    const Index index = impl->statementOf("setType", object);
    if (!impl->tree.isObject(index)) refuseCall("setType", kWrongKind);
    detail::rewriteFirst("setType", impl->tree, index, type);
}

void KDXDocument::setText(Node node, std::string_view text) {
    const Index index = impl->statementOf("setText", node);
    const auto kind = impl->tree.kindOf(index);
    if (kind != MiniKDXParser::lineAction && kind != MiniKDXParser::lineVerbatim)
        refuseCall("setText", kWrongKind);
    detail::rewriteText("setText", impl->tree, index, text);
}

void KDXDocument::setComment(Node node, std::string_view comment) {
    const Index index = impl->statementOf("setComment", node);
    detail::rewriteComment("setComment", impl->tree, index, comment);
}

void KDXDocument::remove(Node node) {
    const Index index = impl->statementOf("remove", node);
    if (impl->tree.isEnd(index) && impl->tree.at(index).parent != kRoot)
        refuseCall("remove", kNoEnd);
    removeAll("remove", impl->tree, {index});
}

std::size_t KDXDocument::removeObjects(const KDXSteps& path) {
    if (path.empty()) refuseCall("removeObjects", kRootStays);
    std::size_t count = 0;
    std::vector<Index> outermost;
    std::size_t around = KDXReader::kUnlimited;  // the depth of the last one
    PathWalk(impl->tree, path).run([&](const PathWalk::Step& step) {
        if (step.depth <= around) around = KDXReader::kUnlimited;
        if (!step.isMatched || !impl->tree.isObject(step.index)) return true;
        ++count;
        if (around != KDXReader::kUnlimited) return true;
        around = step.depth;
        outermost.push_back(step.index);
        return true;
    });
    removeAll("removeObjects", impl->tree, outermost);
    return count;
}

std::size_t KDXDocument::removeParameters(const KDXSteps& path, std::string_view name) {
    std::vector<Index> parameters;
    PathWalk(impl->tree, path).run([&](const PathWalk::Step& step) {
        if (step.isMatched && detail::isParameter(impl->tree, step.index, name))
            parameters.push_back(step.index);
        return true;
    });
    removeAll("removeParameters", impl->tree, parameters);
    return parameters.size();
}

void KDXDocument::move(Node node, Where where) {
    StatementTree& tree = impl->tree;
    const Index index = impl->statementOf("move", node);
    requireMovable("move", tree, index);
    const Spot spot = detail::spotOf("move", *impl, where);
    if (isInside(tree, spot.parent, index)) refuseCall("move", kInsideItself);
    const Block block = blockOf(tree, index);
    if (!isThere(tree, block, spot)) moveBlock("move", tree, block, spot);
}

Node KDXDocument::moveFrom(KDXDocument& other, Node node, Where where) {
    if (&other == this) {
        move(node, where);
        return node;
    }
    const StatementTree& source = other.impl->tree;
    const Index index = other.impl->statementOf("moveFrom", node);
    requireMovable("moveFrom", source, index);
    const Block block = blockOf(source, index);
    requireRemovable("moveFrom", source, {block});
    const Spot spot = detail::spotOf("moveFrom", *impl, where);
    const Layout layout = detail::layoutAt(impl->tree, spot.parent, spot.behind);
    std::string text;
    layOut(source, block, layout, [&](Index, std::string_view bytes) { text += bytes; });
    refuseMark("moveFrom", text);
    Change change(impl->tree);
    detail::insertLines(change, impl->tree, spot, std::move(text), layout.lineEnd);
    const Index first = change.commit();
    other.impl->tree.remove(block.first, block.last);
    Index moved = first;  // the comments that belong to it come first
    while (!impl->tree.isSaying(moved) && source.isSaying(index)) moved = impl->tree.at(moved).next;
    return impl->nodeOf(moved);
}

Node KDXDocument::set(const KDXSteps& path, std::string_view name, std::string_view value) {
    requirePath("set", path);
    StatementTree& tree = impl->tree;
    const Found found = find(tree, path, name);
    if (found.parameter != kNone) {
        detail::rewriteSecond("set", tree, found.parameter, value);
        return impl->nodeOf(found.parameter);
    }
    const KDXSteps missing(path.begin() + static_cast<std::ptrdiff_t>(found.steps), path.end());
    const Spot spot = missing.empty() ? detail::spotForParameter(tree, found.object)
                                      : detail::lastSpotIn("set", tree, found.object);
    Node node = add(*impl, spot, [&](const Layout& layout) {
        return nestedParameter("set", layout, missing, name, value);
    });
    while (tree.isObject(static_cast<Index>(node)))
        node = impl->nodeOf(tree.at(static_cast<Index>(node)).first);
    return node;
}

}  // namespace kiv
