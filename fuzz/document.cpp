// A text, loaded and edited at random: what no edit names keeps its bytes, what one names says what
// it should, a reader of the result sees the tree that the document has, and the text edits lead
// there.

#include <kiv/KDXDocument.h>

#include <array>
#include <functional>
#include <map>
#include <random>

#include "Support.h"

namespace {

using kiv::KDXDocument;
using kiv::MiniKDXParser;
using Node = KDXDocument::Node;
using Where = KDXDocument::Where;

constexpr std::array<std::string_view, 20> kValues = {
    "1",     "",    "a b",   "C:\\dir\\", "a\\#b", "a\\#b\\", "a#b", "#",   " a",   "a\n",
    "a\\ b", "a=b", "a\\\\", "a\\\\#",    "\\",    "a:b",     "a/b", "\\#", "a\rb", "END"};
constexpr std::array<std::string_view, 8> kComments = {"note", "",     "# a # b", "C:\\",
                                                       "#",    "a\nb", "a ",      "\\#"};
constexpr std::array<std::string_view, 11> kTexts = {
    "y = 1\n", "A: n\n  z=1\n END", "# c\n\nw = C:\\ #\r\n", "q = a\\\n",     "END\n",     "B:\n",
    "no KDX",  "y=1\nx=a\\",        "# a\n# b\\\n",          "A:\nEND # \\ ", "x=1\r\ny=2"};

/// How many bytes a byte order mark in front of a text takes.
std::size_t markLength(std::string_view text) {
    return text.substr(0, 3) == "\xEF\xBB\xBF" ? 3 : 0;
}

/// What a statement says, its depth, its bytes.
struct Entry {
    Node node;
    MiniKDXParser::lineType kind;
    std::string first, second, text, comment;
    std::size_t depth;
    std::string source;

    bool saysTheSame(const Entry& other) const {
        return kind == other.kind && first == other.first && second == other.second &&
               text == other.text && comment == other.comment && depth == other.depth;
    }
};
using Entries = std::vector<Entry>;

Entries entriesOf(const KDXDocument& document) {
    Entries entries;
    kiv::KDXDocumentReader reader(document);
    for (Node n = document.next(document.root()); n != Node::none; n = document.next(n)) {
        fuzz::require(reader.next() && reader.node() == n && reader.kind() == document.kind(n) &&
                          reader.first() == document.first(n) &&
                          reader.second() == document.second(n),
                      "a reader of the document sees its statements");
        entries.push_back({n, document.kind(n), document.first(n), document.second(n),
                           document.lineText(n), document.comment(n), document.depth(n),
                           std::string(document.source(n))});
    }
    fuzz::require(!reader.next(), "and no others");
    return entries;
}

/// The document that an edit works on, and what it was before.
class Editor {
public:
    explicit Editor(const std::string& text, std::uint64_t seed)
        : document(text), loadedText(text), random(seed) {
        fuzz::require(document.text() == text, "a document written is its text");
        checkConsistency();
    }

    void run(int edits) {
        for (int i = 0; i < edits; ++i) {
            before = entriesOf(document);
            textBefore = document.text();
            named.clear();
            if (!fuzz::messageOfAnything([this] { editSomething(); }).empty())
                fuzz::require(document.text() == textBefore, "what is refused changes nothing");
            checkConsistency();
            checkUnnamed();
        }
    }

private:
    std::size_t below(std::size_t limit) { return static_cast<std::size_t>(random() % limit); }
    template <typename List>
    std::string_view oneOf(const List& list) {
        return list[below(list.size())];
    }

    Node anyNode() {
        const std::size_t index = below(before.size() + 1);
        return index == before.size() ? document.root() : before[index].node;
    }

    Where anyWhere() {
        const Node node = anyNode();
        const bool holds =
            node == document.root() || document.kind(node) == MiniKDXParser::lineObject;
        if (holds && below(2) == 0)
            return below(2) == 0 ? KDXDocument::firstIn(node) : KDXDocument::lastIn(node);
        return below(2) == 0 ? KDXDocument::before(node) : KDXDocument::behind(node);
    }

    void editSomething() {
        switch (below(14)) {
            case 0:
            case 1: return setValue();
            case 2: return setName();
            case 3: return setType();
            case 4: return setComment();
            case 5: return setText();
            case 6: return addParameter();
            case 7: return addObject();
            case 8: return addOther();
            case 9: return addText();
            case 10: return remove();
            case 11: return move();
            case 12: return moveFromCopy();
            default: return setByPath();
        }
    }

    void name(Node node) { named[node] = true; }
    void nameWithEnd(Node object) {
        name(object);
        if (document.endOf(object) != Node::none) name(document.endOf(object));
    }
    void nameAll(Node node) {
        name(node);
        for (Node n = document.firstChild(node); n != Node::none; n = document.nextSibling(n))
            nameAll(n);
    }
    void nameBlock(Node node) {
        nameAll(node);
        const auto kind = document.kind(node);
        if (kind == MiniKDXParser::lineBlank || kind == MiniKDXParser::lineEnd) return;
        for (Node n = document.previousSibling(node); n != Node::none && document.isComment(n);
             n = document.previousSibling(n))
            name(n);
    }

    void setValue() {
        const Node node = anyNode();
        const std::string_view value = oneOf(kValues);
        name(node);
        const std::string comment =
            document.contains(node) && node != document.root() ? document.comment(node) : "";
        document.setValue(node, value);
        fuzz::require(document.second(node) == value, "a value is set");
        requireComment(node, comment);
    }

    /// A comment stays, or goes to a line of its own above; a '#' protects a backslash.
    void requireComment(Node node, const std::string& comment) {
        const std::string now = document.comment(node);
        if (now == comment) return;
        if (comment.empty()) return fuzz::require(now == "#", "no comment is made up");
        const Node above = document.previousSibling(node);
        fuzz::require(now.empty() && above != Node::none && document.comment(above) == comment,
                      "a comment stays");
    }

    void setName() {
        const Node node = anyNode();
        const std::string_view value = oneOf(kValues);
        const bool isObject = document.kind(node) == MiniKDXParser::lineObject;
        if (isObject) nameWithEnd(node);
        name(node);
        document.setName(node, value);
        fuzz::require((isObject ? document.second(node) : document.first(node)) == value,
                      "a name is set");
    }

    void setType() {
        const Node node = anyNode();
        if (document.kind(node) == MiniKDXParser::lineObject) nameWithEnd(node);
        const std::string_view type = oneOf(kValues);
        document.setType(node, type);
        fuzz::require(document.first(node) == type, "a type is set");
    }

    void setComment() {
        const Node node = anyNode();
        const std::string_view comment = oneOf(kComments);
        name(node);
        const Entry old = entryOf(node);
        document.setComment(node, comment);
        const std::string now = document.comment(node);
        fuzz::require(
            now == comment || now == "# " + std::string(comment) || (comment.empty() && now == "#"),
            "a comment is set");
        fuzz::require(document.second(node) == old.second && document.first(node) == old.first &&
                          document.kind(node) == old.kind,
                      "a comment changes nothing else");
    }

    Entry entryOf(Node node) {
        for (const Entry& entry : before)
            if (entry.node == node) return entry;
        return {};
    }

    void setText() {
        const Node node = anyNode();
        name(node);
        const std::string text = (below(2) == 0 ? ">" : "!") + std::string(oneOf(kValues));
        document.setText(node, text);
        fuzz::require(document.lineText(node) == text, "a text is set");
    }

    void addParameter() {
        const std::string_view value = oneOf(kValues);
        const Node node = document.addParameter(anyWhere(), "p", value);
        name(node);
        fuzz::require(document.first(node) == "p" && document.second(node) == value,
                      "a parameter is added");
    }

    void addObject() {
        const Where where = anyWhere();
        const std::string_view objectName = oneOf(kValues);
        const Node node = document.addObject(where, "T", objectName);
        nameWithEnd(node);
        fuzz::require(document.second(node) == objectName && document.endOf(node) != Node::none,
                      "an object is added");
        if (where.side == Where::Side::first || where.side == Where::Side::last)
            fuzz::require(document.parent(node) == where.node, "it is in the object");
        if (where.side == Where::Side::before)
            fuzz::require(document.parent(node) == document.parent(where.node), "it is beside it");
    }

    void addOther() {
        switch (below(3)) {
            case 0: return name(document.addAction(anyWhere(), oneOf(kValues)));
            case 1: return name(document.addComment(anyWhere(), oneOf(kComments)));
            default: return name(document.addBlankLine(anyWhere()));
        }
    }

    /// It may be a view of the document.
    std::string_view anyText() {
        const Node node = anyNode();
        return node == document.root() || below(4) != 0 ? oneOf(kTexts) : document.source(node);
    }

    void addText() {
        const std::string_view given = anyText();
        const std::string text(given.substr(markLength(given)));
        std::string added;
        for (const Node node : document.addText(anyWhere(), given)) {
            nameAll(node);
            appendAll(added, node);
        }
        fuzz::require(added.substr(0, text.size()) == text, "a text is added as it is");
    }

    void appendAll(std::string& text, Node node) {
        text += document.source(node);
        for (Node n = document.firstChild(node); n != Node::none; n = document.nextSibling(n))
            appendAll(text, n);
    }

    void remove() {
        const Node node = anyNode();
        if (node != document.root()) nameBlock(node);
        document.remove(node);
        fuzz::require(!document.contains(node), "what is removed is gone");
    }

    void move() {
        const Node node = anyNode();
        const Where where = anyWhere();
        if (node != document.root()) nameBlock(node);
        document.move(node, where);
        fuzz::require(document.contains(node), "what is moved stays");
    }

    void moveFromCopy() {
        KDXDocument copy(loadedText);
        const Node node = copy.next(copy.root());
        if (node == Node::none) return;
        const Where where = anyWhere();
        const Node moved = document.moveFrom(copy, node, where);
        nameBlock(moved);
        fuzz::require(!copy.contains(node), "what is moved away is gone");
    }

    void setByPath() {
        const std::size_t steps = below(3);
        kiv::KDXSteps path;
        for (std::size_t i = 0; i < steps; ++i)
            path.push_back({"A", std::string(below(2) == 0 ? "s1" : ""), false});
        const std::string_view value = oneOf(kValues);
        const Node node = document.set(path, "x", value);
        name(node);
        for (Node n = document.parent(node); n != document.root(); n = document.parent(n))
            if (entryOf(n).source.empty()) nameWithEnd(n);
        fuzz::require(document.second(node) == value, "a value is set by path");
        const auto found = document.findParameters(path, "x");
        fuzz::require(!found.empty() && found.front() == node, "it is the one that readers see");
    }

    /// A reader of the text sees what the document has, and places fit.
    void checkConsistency() {
        const std::string text = document.text();
        const Entries now = entriesOf(document);
        const KDXDocument read(text);
        const Entries seen = entriesOf(read);
        fuzz::require(now.size() == seen.size(), "a reader sees as many statements");
        std::size_t offset = markLength(text);
        for (std::size_t i = 0; i < now.size(); ++i) {
            fuzz::require(now[i].saysTheSame(seen[i]) && now[i].source == seen[i].source,
                          "a reader sees the same statement");
            requireSamePlace(now[i], read, seen[i], offset);
            offset += now[i].source.size();
        }
        fuzz::require(offset == text.size(), "the statements are the text");
        fuzz::require(kiv::applyEdits(loadedText, document.textEdits()) == text,
                      "the text edits lead to the text");
        fuzz::require(KDXDocument(document).text() == text,
                      "so do edits in the memory of the text");
    }

    void requireSamePlace(const Entry& now, const KDXDocument& read, const Entry& seen,
                          std::size_t offset) {
        const kiv::KDXPlace place = document.placeOf(now.node);
        const kiv::KDXPlace readPlace = read.placeOf(seen.node);
        fuzz::require(place.offset == readPlace.offset && place.line == readPlace.line &&
                          place.column == readPlace.column,
                      "places are those of the text as it is");
        fuzz::require(document.nodeAt(offset) == now.node && read.nodeAt(offset) == seen.node,
                      "a node is found by its place");
    }

    /// What no edit names keeps its bytes and its order.
    void checkUnnamed() {
        const Entries now = entriesOf(document);
        auto at = now.begin();
        for (const Entry& entry : before) {
            if (named.count(entry.node) != 0) continue;
            // What is new stands between.
            while (at != now.end() && at->node != entry.node) {
                fuzz::require(entryOf(at->node).source.empty() || named.count(at->node) != 0,
                              "what was not named keeps its order");
                ++at;
            }
            fuzz::require(at != now.end(), "what was not named stays");
            requireSameBytes(entry, *at);
            ++at;
        }
    }

    void requireSameBytes(const Entry& old, const Entry& now) {
        if (old.source == now.source) return;
        const bool wasLast = old.node == before.back().node;
        const std::string added = now.source.substr(std::min(old.source.size(), now.source.size()));
        fuzz::require(wasLast && now.source.compare(0, old.source.size(), old.source) == 0 &&
                          added.find_first_not_of("\r\n") == std::string::npos &&
                          old.saysTheSame(now),
                      "what was not named keeps its bytes");
    }

    KDXDocument document;
    std::string loadedText;
    std::mt19937_64 random;
    Entries before;
    std::string textBefore;
    std::map<Node, bool> named;
};

// ---- Edits by a path, in the part of a text that they need.

constexpr std::array<std::string_view, 12> kAround = {"B: b\n    y = 1\nEND\n",
                                                      "B: b\nEND # B:b\n",
                                                      "A: s2\n\tx=1\n\tEND\n",
                                                      "# c\n",
                                                      "\n",
                                                      "A: s1/A\nEND\n",
                                                      "x=1\n",
                                                      "A: s1\n x=1\n A:\nEND\nEND\n",
                                                      "END\n",
                                                      "\xEF\xBB\xBF"
                                                      "C:\n",
                                                      "> run\r\n",
                                                      "y = a\\\n"};
constexpr std::array<std::string_view, 7> kPaths = {"/A",       "/A:s1",     "/A:s1/A", "/A/A",
                                                    "/B:b/A:s", "/A:s1/A/B", "/A:*"};

using Edit = std::function<void(KDXDocument&)>;

std::string edited(std::string_view text, std::string_view part, const Edit& edit) {
    KDXDocument document{std::string(part)};
    const std::string refusal = fuzz::messageOfAnything([&] { edit(document); });
    std::vector<kiv::KDXTextEdit> edits = document.textEdits();
    for (kiv::KDXTextEdit& one : edits)
        one.offset += static_cast<std::size_t>(part.data() - text.data());
    return refusal + '\n' + kiv::applyEdits(text, edits);
}

Edit editBy(const kiv::KDXSteps& path, std::mt19937_64& random) {
    const std::string_view value = kValues[random() % kValues.size()];
    const auto set = [=](KDXDocument& document) {
        document.set(path, "x", value);
        document.set(path, "z", "1");
    };
    const auto add = [=](KDXDocument& document) {
        const std::vector<Node> objects = document.findObjects(path);
        if (!objects.empty()) document.addParameter(KDXDocument::firstIn(objects[0]), "z", value);
    };
    const std::array<Edit, 5> edits = {
        set, set, add, [=](KDXDocument& document) { document.removeObjects(path); },
        [=](KDXDocument& document) { document.removeParameters(path, "x"); }};
    return edits[random() % edits.size()];
}

void checkPart(std::string text, std::uint64_t seed) {
    std::mt19937_64 random(seed);
    const auto some = [&] {
        std::string around;
        for (std::size_t i = random() % 40; i > 0; --i)
            around += kAround[random() % (random() % 4 == 0 ? kAround.size() : 3)];
        return around;
    };
    text = some() + text + some();
    const kiv::KDXSteps path = kiv::readPath(kPaths[random() % kPaths.size()]);
    const Edit edit = editBy(path, random);
    fuzz::require(edited(text, kiv::partFor(text, path), edit) == edited(text, text, edit),
                  "an edit in the part that it needs is the one in the whole text");
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string text(reinterpret_cast<const char*>(data), size);
    std::uint64_t seed = 1469598103934665603U;
    for (const char c : text) seed = (seed ^ static_cast<unsigned char>(c)) * 1099511628211U;
    Editor(text, seed).run(6);
    checkPart(text, seed);
    return 0;
}
