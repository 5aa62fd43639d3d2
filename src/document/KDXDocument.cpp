#include <kiv/KDXDocument.h>

#include <algorithm>
#include <utility>

#include "document/DocumentImpl.h"
#include "document/PathWalk.h"
#include "document/Splice.h"
#include "document/StatementReader.h"

namespace kiv {
namespace {

using detail::Index;
using detail::kNone;
using detail::kRoot;
using detail::PathWalk;
using detail::Statement;
using detail::StatementReader;
using detail::StatementTree;
using Node = KDXDocument::Node;

constexpr const char* kNoByte = "There is no byte at this position.";

/// The statement that holds a byte of the text as it was loaded.
Index loadedStatementAt(const StatementTree& tree, std::size_t offset) {
    Index low = 1;
    Index high = tree.size();
    while (low < high) {
        const Index middle = low + (high - low) / 2;
        const Statement& statement = tree.at(middle);
        if (offset >= statement.begin && offset - statement.begin < statement.length) return middle;
        if (offset < statement.begin)
            high = middle;
        else
            low = middle + 1;
    }
    return kNone;
}

Index changedStatementAt(const StatementTree& tree, std::size_t offset) {
    std::size_t begin = tree.byteOrderMark().size();
    for (Index i = tree.at(kRoot).first; i != kNone; i = tree.nextInText(i)) {
        if (offset >= begin && offset - begin < tree.at(i).length) return i;
        begin += tree.at(i).length;
    }
    return kNone;
}

/// Where a statement begins in the text as it is now.
KDXPlace beginOf(const StatementTree& tree, Index index) {
    if (!tree.isChanged()) return {tree.at(index).begin, tree.at(index).line, 1};
    KDXPlace place{tree.byteOrderMark().size(), 1, 1};
    for (Index i = tree.at(kRoot).first; i != index; i = tree.nextInText(i)) {
        const std::string_view bytes = tree.bytesOf(i);
        place.offset += bytes.size();
        place.line += static_cast<std::size_t>(std::count(bytes.begin(), bytes.end(), '\n'));
    }
    return place;
}

/// The place of one of the bytes of a statement in them.
KDXPlace placeIn(std::string_view bytes, std::size_t byte) {
    const std::string_view before = bytes.substr(0, byte);
    const auto feeds = std::count(before.begin(), before.end(), '\n');
    const std::size_t lineBegin = before.rfind('\n') + 1;
    return {byte, static_cast<std::size_t>(feeds) + 1, byte - lineBegin + 1};
}

/// A place in a statement that begins at `begin`, as a place in the text.
KDXPlace placeBehind(const KDXPlace& begin, const KDXPlace& inside) {
    return {begin.offset + inside.offset, begin.line + inside.line - 1, inside.column};
}

}  // namespace

KDXDocument::KDXDocument() : KDXDocument(std::string()) {}
KDXDocument::KDXDocument(std::string text) : impl(std::make_unique<Impl>(std::move(text))) {}
KDXDocument::KDXDocument(const KDXDocument& other) : impl(std::make_unique<Impl>(*other.impl)) {}
KDXDocument::KDXDocument(KDXDocument&&) noexcept = default;
KDXDocument& KDXDocument::operator=(const KDXDocument& other) {
    if (this != &other) impl = std::make_unique<Impl>(*other.impl);
    return *this;
}
KDXDocument& KDXDocument::operator=(KDXDocument&&) noexcept = default;
KDXDocument::~KDXDocument() = default;

std::string KDXDocument::text() const& {
    std::string text;
    write(text);
    return text;
}

std::string KDXDocument::text() && {
    KDXDocument last(std::move(*this));
    const std::vector<KDXTextEdit> edits = last.textEdits();
    std::string text = last.impl->tree.takeLoadedText();
    detail::splice(text, edits);
    return text;
}

void KDXDocument::write(std::string& out) const {
    const StatementTree& tree = impl->tree;
    if (!tree.isChanged()) {
        out.append(tree.loadedText());
        return;
    }
    out.append(tree.byteOrderMark());
    std::string_view run;  // of pieces that lie one behind the other
    for (Index i = tree.at(kRoot).first; i != kNone; i = tree.nextInText(i)) {
        const std::string_view bytes = tree.bytesOf(i);
        if (run.data() + run.size() == bytes.data()) {
            run = {run.data(), run.size() + bytes.size()};
            continue;
        }
        out.append(run);
        run = bytes;
    }
    out.append(run);
}

Node KDXDocument::root() const {
    return impl->nodeOf(kRoot);
}

Node KDXDocument::parent(Node node) const {
    const Index index = impl->indexOf("parent", node);
    return index == kRoot ? Node::none : impl->nodeOf(impl->tree.at(index).parent);
}

Node KDXDocument::firstChild(Node node) const {
    return impl->nodeOrNone(impl->tree.at(impl->indexOf("firstChild", node)).first);
}

Node KDXDocument::lastChild(Node node) const {
    return impl->nodeOrNone(impl->tree.at(impl->indexOf("lastChild", node)).last);
}

Node KDXDocument::nextSibling(Node node) const {
    return impl->nodeOrNone(impl->tree.at(impl->indexOf("nextSibling", node)).next);
}

Node KDXDocument::previousSibling(Node node) const {
    return impl->nodeOrNone(impl->tree.at(impl->indexOf("previousSibling", node)).previous);
}

Node KDXDocument::next(Node node) const {
    return impl->nodeOrNone(impl->tree.nextInText(impl->indexOf("next", node)));
}

Node KDXDocument::endOf(Node object) const {
    const Index index = impl->holderOf("endOf", object);
    if (index == kRoot || !impl->tree.isClosed(index)) return Node::none;
    return impl->nodeOf(impl->tree.at(index).last);
}

bool KDXDocument::contains(Node node) const noexcept {
    return impl->contains(node);
}

MiniKDXParser::lineType KDXDocument::kind(Node node) const {
    return impl->tree.kindOf(impl->indexOf("kind", node));
}

bool KDXDocument::isComment(Node node) const {
    return impl->tree.at(impl->indexOf("isComment", node)).isComment;
}

std::size_t KDXDocument::depth(Node node) const {
    Index index = impl->statementOf("depth", node);
    const bool closesObject = impl->tree.isEnd(index) && impl->tree.at(index).parent != kRoot;
    std::size_t depth = 0;
    while ((index = impl->tree.at(index).parent) != kRoot) ++depth;
    return depth - (closesObject ? 1 : 0);
}

std::string KDXDocument::first(Node node) const {
    const Index index = impl->statementOf("first", node);
    detail::StatementSplitter splitter;
    return std::string(impl->tree.halvesOf(index, splitter).first);
}

std::string KDXDocument::second(Node node) const {
    const Index index = impl->statementOf("second", node);
    detail::StatementSplitter splitter;
    return std::string(impl->tree.halvesOf(index, splitter).second);
}

std::string KDXDocument::comment(Node node) const {
    const Index index = impl->statementOf("comment", node);
    return std::string(StatementReader(impl->tree.bytesOf(index))->comment());
}

std::string KDXDocument::lineText(Node node) const {
    const Index index = impl->statementOf("lineText", node);
    return std::string(StatementReader(impl->tree.bytesOf(index))->text());
}

std::string_view KDXDocument::source(Node node) const {
    return impl->tree.bytesOf(impl->statementOf("source", node));
}

KDXPlace KDXDocument::placeOf(Node node, KDXReader::Part part, std::size_t byte) const {
    const Index index = impl->statementOf("placeOf", node);
    const KDXPlace inside = StatementReader(impl->tree.bytesOf(index)).placeOf(part, byte);
    return placeBehind(beginOf(impl->tree, index), inside);
}

KDXPlace KDXDocument::placeInSource(Node node, std::size_t byte) const {
    const Index index = impl->statementOf("placeInSource", node);
    const std::string_view bytes = impl->tree.bytesOf(index);
    if (byte > bytes.size()) detail::refuseCall("placeInSource", kNoByte);
    return placeBehind(beginOf(impl->tree, index), placeIn(bytes, byte));
}

Node KDXDocument::nodeAt(std::size_t offset) const {
    const StatementTree& tree = impl->tree;
    return impl->nodeOrNone(tree.isChanged() ? changedStatementAt(tree, offset)
                                             : loadedStatementAt(tree, offset));
}

std::vector<Node> KDXDocument::findObjects(const KDXSteps& path) const {
    std::vector<Node> found;
    if (path.empty()) return {root()};
    PathWalk(impl->tree, path).run([&](const PathWalk::Step& step) {
        if (step.isMatched && impl->tree.isObject(step.index)) impl->append(found, step.index);
        return true;
    });
    return found;
}

std::vector<Node> KDXDocument::findParameters(const KDXSteps& path, std::string_view name) const {
    std::vector<Node> found;
    PathWalk(impl->tree, path).run([&](const PathWalk::Step& step) {
        if (step.isMatched && detail::isParameter(impl->tree, step.index, name))
            impl->append(found, step.index);
        return true;
    });
    return found;
}

std::vector<KDXTextEdit> KDXDocument::textEdits() const {
    const StatementTree& tree = impl->tree;
    const std::string_view loaded = tree.loadedText();
    std::vector<KDXTextEdit> edits;
    std::size_t kept = tree.byteOrderMark().size();
    std::string replacement;
    const auto endRun = [&](std::size_t end) {
        if (loaded.substr(kept, end - kept) != replacement)
            edits.push_back({kept, end - kept, replacement});
        replacement.clear();
    };
    for (Index i = tree.at(kRoot).first; i != kNone; i = tree.nextInText(i)) {
        const Statement& statement = tree.at(i);
        if (statement.state != Statement::State::loaded) {
            replacement.append(tree.bytesOf(i));
            continue;
        }
        endRun(statement.begin);
        kept = std::size_t{statement.begin} + statement.length;
    }
    endRun(loaded.size());
    return edits;
}

struct KDXDocumentReader::State {
    explicit State(const KDXDocument::Impl& readDocument)
        : document(readDocument), upcoming(readDocument.tree.nextInText(kRoot)) {}

    const KDXDocument::Impl& document;
    Index upcoming;
    detail::StatementSplitter splitter;
};

KDXDocumentReader::KDXDocumentReader(const KDXDocument& givenDocument)
    : state(std::make_unique<State>(*givenDocument.impl)) {}
KDXDocumentReader::KDXDocumentReader(KDXDocumentReader&&) noexcept = default;
KDXDocumentReader& KDXDocumentReader::operator=(KDXDocumentReader&&) noexcept = default;
KDXDocumentReader::~KDXDocumentReader() = default;

bool KDXDocumentReader::next() {
    const Index index = state->upcoming;
    current = {};
    if (index == kNone) return false;
    const StatementTree& tree = state->document.tree;
    current.node = state->document.nodeOf(index);
    current.kind = tree.kindOf(index);
    tree.readHalves(index, state->splitter, current.first, current.second);
    state->upcoming = tree.nextInText(index);
    return true;
}

}  // namespace kiv
