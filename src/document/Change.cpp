#include "document/Change.h"

#include "document/StatementReader.h"

namespace kiv::detail {

Change::~Change() {
    if (!committed) tree.dropBytes(addedBytes);
}

void Change::rewrite(Index index, std::string_view bytes) {
    const StatementReader statement(bytes);
    const std::size_t begin = tree.addBytes(bytes);
    rewritings.push_back({index, begin, bytes.size(), isCommentAlone(*statement)});
}

void Change::insert(Index parent, Index behind, std::string_view text) {
    fragment = readStatements(text, tree.addedSize());
    tree.addBytes(text);
    tree.reserve(fragment.size());
    insertParent = parent;
    insertBehind = behind;
}

Index Change::commit() noexcept {
    committed = true;
    for (const Rewriting& rewriting : rewritings)
        tree.setBytes(rewriting.index, rewriting.begin, rewriting.length, rewriting.isComment);
    if (fragment.empty()) return kNone;
    return tree.insert(insertParent, insertBehind, fragment);
}

}  // namespace kiv::detail
