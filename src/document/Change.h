#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

#include "document/StatementTree.h"

namespace kiv::detail {

/// A change of a document that is made as a whole or not at all: it is collected, which may throw,
/// and then committed, which cannot.
class Change {
public:
    explicit Change(StatementTree& changedTree) : tree(changedTree), addedBytes(tree.addedSize()) {}
    ~Change();
    Change(const Change&) = delete;
    Change& operator=(const Change&) = delete;

    /// Gives a statement other bytes, which are one statement, too.
    void rewrite(Index index, std::string_view bytes);

    /// Puts the statements of a text between `parent` and the child behind which they come, kNone
    /// for the first. Once in a change.
    void insert(Index parent, Index behind, std::string_view text);

    /// The statements to be inserted, below a root.
    const std::vector<Statement>& insertedStatements() const { return fragment; }

    /// @return the index of the first statement that was inserted; kNone when none was.
    Index commit() noexcept;

private:
    struct Rewriting {
        Index index;
        std::size_t begin;
        std::size_t length;
        bool isComment;
    };

    StatementTree& tree;
    std::size_t addedBytes;  // before the change
    bool committed = false;
    std::vector<Rewriting> rewritings;
    std::vector<Statement> fragment;
    Index insertParent = kRoot;
    Index insertBehind = kNone;
};

}  // namespace kiv::detail
