#include "document/Rewriting.h"

#include <algorithm>
#include <string>
#include <vector>

#include "base/Blank.h"
#include "document/Change.h"
#include "document/Composition.h"
#include "document/StatementReader.h"

namespace kiv::detail {
namespace {

using Part = KDXReader::Part;

/// A statement that is to be written anew, and what it says now.
class Rewriting {
public:
    Rewriting(StatementTree& changedTree, Index changedIndex)
        : tree(changedTree),
          index(changedIndex),
          bytes(tree.bytesOf(index)),
          statement(bytes),
          meaning(meaningOf(*statement)) {}

    std::string_view upTo(std::size_t end) const { return std::string_view(bytes).substr(0, end); }
    std::string_view from(std::size_t begin) const { return std::string_view(bytes).substr(begin); }
    bool isObject() const { return meaning.kind == MiniKDXParser::lineObject; }
    Layout layout() const { return layoutAt(tree, tree.at(index).parent, tree.at(index).previous); }

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
        second.empty() ? withoutTrailingBlanks(separator) : std::string_view(separator);
    return joined(old.upTo(nameEnd), shown, second, comment.empty() ? "" : " ", comment,
                  old.statement->lineEnd());
}

/// The statement with a second half where none was. The blanks in front of a comment stand in front
/// of the half then, too.
std::string filled(const Rewriting& old, std::string_view second) {
    const std::size_t begin = old.statement.beginOf(Part::second);
    const std::string_view rest = old.from(begin);
    const std::string_view blanks = indentationOf(rest);
    const bool isSpaced = begin > 1 && isBlank(old.bytes[begin - 2]);
    const std::string usual = old.isObject()
                                  ? old.layout().colon.substr(old.layout().colon.find(':') + 1)
                              : isSpaced ? " "
                                         : "";
    const std::string_view gap = blanks.empty() ? std::string_view(usual) : blanks;
    if (old.meaning.comment.empty())
        return joined(old.upTo(begin), gap, second, old.statement->lineEnd());
    return joined(old.upTo(begin), gap, second, blanks.empty() ? " " : "", rest);
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
        candidates.insert(candidates.begin(), {filled(old, second), wanted});
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
    const std::string_view lineEnd = old.statement->lineEnd();
    if (old.statement->text().empty())
        return {{lineEnd.empty() ? old.layout().lineEnd : std::string(lineEnd),
                 {old.meaning.kind, {}, {}, {}}}};
    Meaning wanted = old.meaning;
    wanted.comment = {};
    Meaning hashed = old.meaning;
    hashed.comment = "#";
    const std::string_view text = old.upTo(old.statement.endOf(Part::text));
    const std::string_view head = old.upTo(old.statement.beginOf(Part::comment));
    return {{joined(text, lineEnd), wanted}, {joined(head, "#", lineEnd), hashed}};
}

bool canRead(const std::vector<Candidate>& candidates) {
    return std::any_of(candidates.begin(), candidates.end(), readsBack);
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
    if (end->comment() != endComment(old.meaning.first, old.meaning.second)) return {};
    Layout layout;
    layout.indentation = indentationOf(bytes);
    layout.lineEnd = end->lineEnd();
    layout.commentEnds = true;
    return endLine(layout, type, name);
}

/// Writes a line with halves anew, with `above` in front of it.
void commitHalves(const Rewriting& old, const std::string& line, const std::string& above,
                  const std::string& end) {
    Change change(old.tree);
    const Statement statement = old.tree.at(old.index);  // a copy: an insertion may move it
    if (!above.empty()) change.insert(statement.parent, statement.previous, above);
    if (!end.empty()) change.rewrite(statement.last, end);
    change.rewrite(old.index, line);
    change.commit();
}

}  // namespace

void rewriteSecond(const char* function, StatementTree& tree, Index index,
                   std::string_view second) {
    const Rewriting old(tree, index);
    if (second == old.meaning.second) return;
    const std::string end = renamedEnd(old, old.meaning.first, second);
    const std::vector<Candidate> beside = withSecond(old, second);
    if (canRead(beside) || old.meaning.comment.empty())
        return commitHalves(old, firstThatReads(function, beside), {}, end);
    const std::string alone = firstThatReads(function, withSecondAlone(old, second));
    Layout layout = old.layout();
    layout.indentation = indentationOf(old.bytes);
    commitHalves(old, alone, commentLine(function, layout, old.meaning.comment), end);
}

void rewriteFirst(const char* function, StatementTree& tree, Index index, std::string_view first) {
    const Rewriting old(tree, index);
    if (first == old.meaning.first) return;
    const std::string end = renamedEnd(old, first, old.meaning.second);
    commitHalves(old, firstThatReads(function, withFirst(old, first)), {}, end);
}

void rewriteText(const char* function, StatementTree& tree, Index index, std::string_view text) {
    const Rewriting old(tree, index);
    const std::string_view head = old.upTo(old.statement.beginOf(Part::text));
    const std::string_view tail = old.from(old.statement.endOf(Part::text));
    if (text == old.meaning.first) return;
    Meaning wanted = old.meaning;
    wanted.first = text;
    std::vector<Candidate> candidates{{joined(head, text, tail), wanted}};
    if (wanted.comment.empty()) {
        wanted.comment = "#";
        candidates.push_back({joined(head, text, " #", tail), wanted});
    }
    commit(tree, index, firstThatReads(function, candidates));
}

void rewriteComment(const char* function, StatementTree& tree, Index index,
                    std::string_view comment) {
    const Rewriting old(tree, index);
    const std::string text = comment.empty() ? std::string() : withHash(comment);
    if (text == old.meaning.comment) return;
    commit(tree, index,
           firstThatReads(function, text.empty() ? withoutComment(old) : withComment(old, text)));
}

}  // namespace kiv::detail
