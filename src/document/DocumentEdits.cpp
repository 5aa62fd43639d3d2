#include <algorithm>
#include <utility>

#include "base/Blank.h"
#include "document/Change.h"
#include "document/Composition.h"
#include "document/DocumentImpl.h"
#include "document/StatementReader.h"

namespace kiv {
namespace {

using detail::Candidate;
using detail::Change;
using detail::Index;
using detail::kNone;
using detail::kRoot;
using detail::Layout;
using detail::Meaning;
using detail::refuseCall;
using detail::refuseData;
using detail::StatementReader;
using detail::StatementTree;
using Node = KDXDocument::Node;
using Part = KDXReader::Part;
using Where = KDXDocument::Where;

constexpr const char* kWrongKind = "A statement of this kind has no such part.";
constexpr const char* kNoEnd = "The END of an object goes with the object.";
constexpr const char* kInsideItself = "A statement cannot be put inside itself.";
constexpr const char* kNoPath = "Every step needs a type and a name.";
constexpr const char* kNeverClosed = "The object is never closed: its END is missing.";
constexpr const char* kNoKdx = "A line of the text is no KDX.";
constexpr const char* kTooManyEnds = "The text has an END that closes nothing.";
constexpr const char* kTooFewEnds = "The text has an object that is never closed.";
constexpr const char* kMarkInFront =
    "A line would come to stand at the beginning that is then read as a byte order mark.";

// ---- The places where something is put.

/// Between `parent` and the child behind which something comes, kNone for the first.
struct Spot {
    Index parent;
    Index behind;
};

/// The last of the blank lines that set comments at the head of the text apart; kNone without any.
Index endOfHead(const StatementTree& tree) {
    Index end = kNone;
    for (Index i = tree.at(kRoot).first; i != kNone && !tree.isSaying(i); i = tree.at(i).next)
        if (!tree.at(i).isComment) end = i;
    return end;
}

/// The last child that says something, the END aside; kNone without any.
Index lastSaying(const StatementTree& tree, Index parent) {
    Index index = tree.at(parent).last;
    if (parent != kRoot && tree.isEnd(index)) index = tree.at(index).previous;
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
    switch (side) {
        case Where::Side::first: return {index, index == kRoot ? endOfHead(tree) : kNone};
        case Where::Side::last: return {index, lastChildToFollow(tree, index)};
        case Where::Side::before:
            return {tree.at(index).parent, tree.at(tree.firstOwned(index)).previous};
        case Where::Side::behind: return spotBehind(tree, index);
    }
    return {kRoot, kNone};
}

/// The child behind which the statement before a spot in text order lies; the root for the first.
Index statementBefore(const StatementTree& tree, const Spot& spot) {
    return spot.behind == kNone ? spot.parent : tree.lastBelow(spot.behind);
}

/// What came behind an object that is never closed would be in it.
void requireOpenSpot(const char* function, const StatementTree& tree, const Spot& spot) {
    const bool isBehindObject = spot.behind != kNone && tree.isObject(spot.behind);
    if (isBehindObject && !tree.isClosed(spot.behind)) refuseData(function, kNeverClosed);
}

/// The place that a caller asks for.
Spot spotOf(const char* function, const KDXDocument::Impl& document, Where where) {
    const bool isInside = where.side == Where::Side::first || where.side == Where::Side::last;
    const Index index = isInside ? document.holderOf(function, where.node)
                                 : document.statementOf(function, where.node);
    const Spot spot = spotFor(document.tree, where.side, index);
    requireOpenSpot(function, document.tree, spot);
    return spot;
}

/// A text that would come to stand at the beginning must not begin with a byte order mark.
void requireNoMark(const char* function, const StatementTree& tree, std::string_view bytes) {
    if (tree.byteOrderMark().empty() && KDXReader(bytes).hasByteOrderMark())
        refuseData(function, kMarkInFront);
}

// ---- Adding.

/// Whether a text may end with this statement and be open there, or lack its line end.
bool mayLackSomething(std::string_view bytes) {
    if (bytes.back() != '\n') return true;
    const std::string_view line = bytes.substr(0, bytes.size() - 1);
    return !line.empty() && (line.back() == '\\' || detail::isBlank(line.back()));
}

/// Gives the last statement of the text what it lacks when something comes behind it. @return
/// whether that is a line end, which what comes then has to do without.
bool closeTextBefore(Change& change, const StatementTree& tree, const Spot& spot,
                     std::string_view lineEnd) {
    const Index before = statementBefore(tree, spot);
    if (before == kRoot || !mayLackSomething(tree.bytesOf(before))) return false;
    if (tree.nextInText(before) != kNone) return false;
    const std::string_view bytes = tree.bytesOf(before);
    const std::string whole = detail::closed(bytes, lineEnd);
    const bool lacksLineEnd = bytes.back() != '\n';
    if (whole.size() != bytes.size()) change.rewrite(before, whole);
    return lacksLineEnd;
}

/// Lines for a place. Where the text ends there without a line end, they end so, too, unless they
/// were open then.
void insert(Change& change, const StatementTree& tree, const Spot& spot, std::string lines,
            std::string_view lineEnd) {
    const std::string_view bare = std::string_view(lines).substr(0, lines.size() - lineEnd.size());
    const bool mayBeOpen = bare.empty() || bare.back() == '\\' || detail::isBlank(bare.back());
    const std::size_t bareSize = mayBeOpen ? lines.size() : bare.size();
    if (closeTextBefore(change, tree, spot, lineEnd)) lines.resize(bareSize);
    change.insert(spot.parent, spot.behind, lines);
}

/// Adds the lines that `compose` makes for a layout. @return the first statement.
template <typename Compose>
Node add(const char* function, KDXDocument::Impl& document, Where where, Compose compose) {
    const Spot spot = spotOf(function, document, where);
    const Layout layout = detail::layoutAt(document.tree, spot.parent, spot.behind);
    Change change(document.tree);
    insert(change, document.tree, spot, compose(layout), layout.lineEnd);
    return document.nodeOf(change.commit());
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

// ---- Rewriting.

/// A statement that is to be written anew, and what it says now.
class Rewriting {
public:
    Rewriting(StatementTree& changedTree, Index changedIndex)
        : tree(changedTree),
          index(changedIndex),
          bytes(tree.bytesOf(index)),
          statement(bytes),
          meaning(detail::meaningOf(*statement)) {}

    std::string_view upTo(std::size_t end) const { return std::string_view(bytes).substr(0, end); }
    std::string_view from(std::size_t begin) const { return std::string_view(bytes).substr(begin); }
    bool isObject() const { return meaning.kind == MiniKDXParser::lineObject; }
    Layout layout() const {
        return detail::layoutAt(tree, tree.at(index).parent, tree.at(index).previous);
    }

    StatementTree& tree;
    Index index;
    std::string bytes;  // a copy: those in the tree may move when others are added
    StatementReader statement;
    Meaning meaning;
};

/// Puts one text behind the other.
template <typename... Texts>
std::string joined(const Texts&... texts) {
    std::string text;
    (text.append(texts), ...);
    return text;
}

/// The statement in one line, with another second half: what remains of its own blanks, and else
/// those of its neighbours.
std::string respelled(const Rewriting& old, std::string_view second, std::string_view comment) {
    const std::size_t nameEnd = old.statement.endOf(Part::first);
    const bool isSpaced = old.from(nameEnd).substr(0, 1) == " ";
    const std::string separator = old.isObject() ? old.layout().colon : isSpaced ? " = " : "=";
    const std::string_view shown =
        second.empty() ? detail::withoutTrailingBlanks(separator) : std::string_view(separator);
    return joined(old.upTo(nameEnd), shown, second, comment.empty() ? "" : " ", comment,
                  old.statement->lineEnd());
}

std::vector<Candidate> withSecond(const Rewriting& old, std::string_view second) {
    const Meaning wanted{old.meaning.kind, old.meaning.first, second, old.meaning.comment};
    const Meaning hashed{old.meaning.kind, old.meaning.first, second, "#"};
    const std::string_view head = old.upTo(old.statement.beginOf(Part::second));
    const std::string_view tail = old.from(old.statement.endOf(Part::second));
    const std::string whole = respelled(old, second, old.meaning.comment);
    std::vector<Candidate> candidates{{joined(head, second, tail), wanted},
                                      {joined(head, second, " ", tail), wanted},
                                      {whole, wanted}};
    if (old.meaning.second.empty())
        std::rotate(candidates.begin(), candidates.end() - 1, candidates.end());
    if (old.meaning.comment.empty()) {
        candidates.push_back({joined(head, second, " #", tail), hashed});
        candidates.push_back({respelled(old, second, "#"), hashed});
    }
    return candidates;
}

/// The same for a second half beside which the comment cannot stay.
std::vector<Candidate> withSecondAlone(const Rewriting& old, std::string_view second) {
    const Meaning wanted{old.meaning.kind, old.meaning.first, second, {}};
    return {{respelled(old, second, {}), wanted}};
}

std::vector<Candidate> withFirst(const Rewriting& old, std::string_view first) {
    const Meaning wanted{old.meaning.kind, first, old.meaning.second, old.meaning.comment};
    const std::string_view head = old.upTo(old.statement.beginOf(Part::first));
    const std::string_view tail = old.from(old.statement.endOf(Part::first));
    const bool isSpaced = old.meaning.first.empty() && tail.substr(1, 1) == " ";
    return {{joined(head, first, isSpaced ? " " : "", tail), wanted},
            {joined(head, first, tail), wanted}};
}

std::vector<Candidate> withComment(const Rewriting& old, const std::string& comment) {
    Meaning wanted = old.meaning;
    wanted.comment = comment;
    const std::string_view lineEnd = old.statement->lineEnd();
    const std::string_view text = old.upTo(old.statement.endOf(Part::text));
    const std::string_view head = old.upTo(old.statement.beginOf(Part::comment));
    const std::string_view tail = old.from(old.statement.endOf(Part::comment));
    if (old.meaning.comment.empty())
        return {{joined(text, old.statement->text().empty() ? "" : " ", comment, lineEnd), wanted}};
    return {{joined(head, comment, lineEnd), wanted}, {joined(head, comment, tail), wanted}};
}

/// Where what remains would be open, a '#' stays.
std::vector<Candidate> withoutComment(const Rewriting& old) {
    if (old.statement->text().empty())
        return {{old.layout().lineEnd, {old.meaning.kind, {}, {}, {}}}};
    Meaning wanted = old.meaning;
    wanted.comment = {};
    Meaning hashed = old.meaning;
    hashed.comment = "#";
    const std::string_view lineEnd = old.statement->lineEnd();
    const std::string_view text = old.upTo(old.statement.endOf(Part::text));
    const std::string_view head = old.upTo(old.statement.beginOf(Part::comment));
    return {{joined(text, lineEnd), wanted}, {joined(head, "#", lineEnd), hashed}};
}

bool canRead(const std::vector<Candidate>& candidates) {
    return std::any_of(candidates.begin(), candidates.end(), detail::readsBack);
}

void commit(StatementTree& tree, Index index, const std::string& bytes) {
    Change change(tree);
    change.rewrite(index, bytes);
    change.commit();
}

/// The END of an object with another name, where its comment names the object; else nothing.
std::string renamedEnd(const Rewriting& old, std::string_view type, std::string_view name) {
    if (!old.isObject() || !old.tree.isClosed(old.index)) return {};
    const std::string_view bytes = old.tree.bytesOf(old.tree.at(old.index).last);
    const StatementReader end(bytes);
    if (end->comment() != detail::endComment(old.meaning.first, old.meaning.second)) return {};
    Layout layout;
    layout.indentation = detail::indentationOf(bytes);
    layout.lineEnd = end->lineEnd();
    layout.commentEnds = true;
    return detail::endLine(layout, type, name);
}

/// Writes a line with halves anew, with `above` in front of it.
void commitHalves(const Rewriting& old, const std::string& line, const std::string& above,
                  const std::string& end) {
    Change change(old.tree);
    const auto& statement = old.tree.at(old.index);
    if (!above.empty()) change.insert(statement.parent, statement.previous, above);
    if (!end.empty()) change.rewrite(statement.last, end);
    change.rewrite(old.index, line);
    change.commit();
}

void rewriteSecond(const char* function, StatementTree& tree, Index index,
                   std::string_view second) {
    const Rewriting old(tree, index);
    const std::string end = renamedEnd(old, old.meaning.first, second);
    const std::vector<Candidate> beside = withSecond(old, second);
    const std::vector<Candidate> alone = withSecondAlone(old, second);
    if (canRead(beside) || !canRead(alone))
        return commitHalves(old, detail::firstThatReads(function, beside), {}, end);
    Layout layout = old.layout();
    layout.indentation = detail::indentationOf(old.bytes);
    commitHalves(old, detail::firstThatReads(function, alone),
                 detail::commentLine(function, layout, old.meaning.comment), end);
}

void rewriteFirst(const char* function, StatementTree& tree, Index index, std::string_view first) {
    const Rewriting old(tree, index);
    const std::string end = renamedEnd(old, first, old.meaning.second);
    commitHalves(old, detail::firstThatReads(function, withFirst(old, first)), {}, end);
}

// ---- Moving.

/// What is moved or removed with a statement: the comments that belong to it, and all that is in
/// it.
struct Block {
    Index first;
    Index last;
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
        requireNoMark(function, tree, tree.bytesOf(first));
}

void requireMovable(const char* function, const StatementTree& tree, Index index) {
    if (tree.isEnd(index)) refuseCall(function, kNoEnd);
    if (tree.isObject(index) && !tree.isClosed(index)) refuseData(function, kNeverClosed);
}

bool isInside(const StatementTree& tree, Index index, Index outer) {
    while (index != kRoot && index != outer) index = tree.at(index).parent;
    return index == outer;
}

/// Removes statements, which stand in text order, with their blocks.
std::size_t removeAll(const char* function, KDXDocument::Impl& document,
                      const std::vector<Node>& nodes) {
    StatementTree& tree = document.tree;
    std::vector<Block> blocks;
    for (const Node node : nodes) {
        const Index index = document.statementOf(function, node);
        if (tree.isEnd(index) && tree.at(index).parent != kRoot) refuseCall(function, kNoEnd);
        const bool isGoing = !blocks.empty() && isInside(tree, index, blocks.back().last);
        if (!isGoing) blocks.push_back(blockOf(tree, index));
    }
    requireRemovable(function, tree, blocks);
    for (const Block& block : blocks) tree.remove(block.first, block.last);
    return nodes.size();
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
    if (statementBefore(tree, spot) == kRoot)
        requireNoMark(function, tree, tree.bytesOf(block.first));
    Change change(tree);
    closeTextBefore(change, tree, spot, layout.lineEnd);
    layOut(tree, block, layout, [&](Index index, const std::string& bytes) {
        if (bytes != tree.bytesOf(index)) change.rewrite(index, bytes);
    });
    change.commit();
    tree.move(block.first, block.last, spot.parent, spot.behind);
}

// ---- Setting by path.

KDXSteps beginningOf(const KDXSteps& path, std::size_t count) {
    return {path.begin(), path.begin() + static_cast<std::ptrdiff_t>(count)};
}

void requirePath(const char* function, const KDXSteps& path) {
    for (const KDXStep& step : path)
        if (step.anyDepth || !step.type || !step.name) refuseCall(function, kNoPath);
}

/// A parameter with objects around it, one for each step.
std::string nestedParameter(const char* function, Layout layout, const KDXSteps& steps,
                            std::string_view name, std::string_view value) {
    std::string text;
    std::vector<std::string> ends;
    for (const KDXStep& step : steps) {
        const std::string_view shown = *step.name == *step.type ? "" : std::string_view(*step.name);
        text += detail::objectLine(function, layout, *step.type, shown);
        ends.push_back(detail::endLine(layout, *step.type, shown));
        layout.indentation += layout.step;
        layout.equalsColumn = 0;
    }
    text += detail::parameterLine(function, layout, name, value);
    for (auto end = ends.rbegin(); end != ends.rend(); ++end) text += *end;
    return text;
}

/// Behind the last parameter directly in an object; without one, in front of what is in it.
Spot spotForParameter(const StatementTree& tree, Index object) {
    Index index = lastSaying(tree, object);
    while (index != kNone && tree.kindOf(index) != MiniKDXParser::lineParameter)
        index = tree.at(index).previous;
    if (index != kNone) return {object, index};
    return spotFor(tree, Where::Side::first, object);
}

}  // namespace

Node KDXDocument::addParameter(Where where, std::string_view name, std::string_view value) {
    return add("addParameter", *impl, where, [&](const Layout& layout) {
        return detail::parameterLine("addParameter", layout, name, value);
    });
}

Node KDXDocument::addObject(Where where, std::string_view type, std::string_view name) {
    return add("addObject", *impl, where, [&](const Layout& layout) {
        return detail::objectLine("addObject", layout, type, name) +
               detail::endLine(layout, type, name);
    });
}

Node KDXDocument::addAction(Where where, std::string_view text) {
    return add("addAction", *impl, where,
               [&](const Layout& layout) { return detail::actionLine("addAction", layout, text); });
}

Node KDXDocument::addComment(Where where, std::string_view comment) {
    return add("addComment", *impl, where, [&](const Layout& layout) {
        return detail::commentLine("addComment", layout, comment);
    });
}

Node KDXDocument::addBlankLine(Where where) {
    return add("addBlankLine", *impl, where, [](const Layout& layout) { return layout.lineEnd; });
}

std::vector<Node> KDXDocument::addText(Where where, std::string_view text) {
    StatementTree& tree = impl->tree;
    const Spot spot = spotOf("addText", *impl, where);
    const Layout layout = detail::layoutAt(tree, spot.parent, spot.behind);
    Change change(tree);
    if (!text.empty())
        insert(change, tree, spot, detail::closed(text, layout.lineEnd), layout.lineEnd);
    requireBalanced("addText", change.insertedStatements());
    std::vector<Node> nodes;
    nodes.reserve(change.insertedStatements().size());
    const Index first = change.commit();
    const auto isAdded = [&](Index i) { return tree.at(i).serial == tree.at(first).serial; };
    for (Index i = first; i != kNone && isAdded(i); i = tree.at(i).next)
        nodes.push_back(impl->nodeOf(i));
    return nodes;
}

void KDXDocument::setValue(Node parameter, std::string_view value) {
    const Index index = impl->statementOf("setValue", parameter);
    if (impl->tree.kindOf(index) != MiniKDXParser::lineParameter)
        refuseCall("setValue", kWrongKind);
    rewriteSecond("setValue", impl->tree, index, value);
}

void KDXDocument::setName(Node node, std::string_view name) {
    const Index index = impl->statementOf("setName", node);
    if (impl->tree.isObject(index)) return rewriteSecond("setName", impl->tree, index, name);
    if (impl->tree.kindOf(index) != MiniKDXParser::lineParameter) refuseCall("setName", kWrongKind);
    rewriteFirst("setName", impl->tree, index, name);
}

void KDXDocument::setType(Node object, std::string_view type) {
    const Index index = impl->statementOf("setType", object);
    if (!impl->tree.isObject(index)) refuseCall("setType", kWrongKind);
    rewriteFirst("setType", impl->tree, index, type);
}

void KDXDocument::setText(Node node, std::string_view text) {
    const Index index = impl->statementOf("setText", node);
    const auto kind = impl->tree.kindOf(index);
    if (kind != MiniKDXParser::lineAction && kind != MiniKDXParser::lineVerbatim)
        refuseCall("setText", kWrongKind);
    const Rewriting old(impl->tree, index);
    const std::string_view head = old.upTo(old.statement.beginOf(Part::text));
    const std::string_view tail = old.from(old.statement.endOf(Part::text));
    commit(impl->tree, index,
           detail::firstThatReads(
               "setText", {{joined(head, text, tail), {kind, text, {}, old.meaning.comment}}}));
}

void KDXDocument::setComment(Node node, std::string_view comment) {
    const Index index = impl->statementOf("setComment", node);
    const Rewriting old(impl->tree, index);
    if (comment.empty() && old.meaning.comment.empty()) return;
    const std::string text = comment.empty() ? std::string() : detail::withHash(comment);
    const std::vector<Candidate> candidates =
        text.empty() ? withoutComment(old) : withComment(old, text);
    commit(impl->tree, index, detail::firstThatReads("setComment", candidates));
}

void KDXDocument::remove(Node node) {
    removeAll("remove", *impl, {node});
}

std::size_t KDXDocument::removeObjects(const KDXSteps& path) {
    return removeAll("removeObjects", *impl, findObjects(path));
}

std::size_t KDXDocument::removeParameters(const KDXSteps& path, std::string_view name) {
    return removeAll("removeParameters", *impl, findParameters(path, name));
}

void KDXDocument::move(Node node, Where where) {
    StatementTree& tree = impl->tree;
    const Index index = impl->statementOf("move", node);
    requireMovable("move", tree, index);
    const Spot spot = spotOf("move", *impl, where);
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
    const Spot spot = spotOf("moveFrom", *impl, where);
    const Layout layout = detail::layoutAt(impl->tree, spot.parent, spot.behind);
    std::string text;
    layOut(source, block, layout, [&](Index, const std::string& bytes) { text += bytes; });
    if (statementBefore(impl->tree, spot) == kRoot) requireNoMark("moveFrom", impl->tree, text);
    Change change(impl->tree);
    insert(change, impl->tree, spot, std::move(text), layout.lineEnd);
    const Index first = change.commit();
    other.impl->tree.remove(block.first, block.last);
    Index moved = first;  // the comments that belong to it come first
    while (!impl->tree.isSaying(moved) && source.isSaying(index)) moved = impl->tree.at(moved).next;
    return impl->nodeOf(moved);
}

Node KDXDocument::set(const KDXSteps& path, std::string_view name, std::string_view value) {
    requirePath("set", path);
    StatementTree& tree = impl->tree;
    const std::vector<Node> parameters = findParameters(path, name);
    if (!parameters.empty()) {
        rewriteSecond("set", tree, impl->indexOf("set", parameters.front()), value);
        return parameters.front();
    }
    std::size_t made = path.size();
    std::vector<Node> objects = findObjects(path);
    while (objects.empty()) objects = findObjects(beginningOf(path, --made));
    const Index object = impl->indexOf("set", objects.front());
    const KDXSteps missing(path.begin() + static_cast<std::ptrdiff_t>(made), path.end());
    const Spot spot =
        missing.empty() ? spotForParameter(tree, object) : spotFor(tree, Where::Side::last, object);
    requireOpenSpot("set", tree, spot);
    const Layout layout = detail::layoutAt(tree, spot.parent, spot.behind);
    Change change(tree);
    insert(change, tree, spot, nestedParameter("set", layout, missing, name, value),
           layout.lineEnd);
    Index index = change.commit();
    while (tree.isObject(index)) index = tree.at(index).first;
    return impl->nodeOf(index);
}

}  // namespace kiv
