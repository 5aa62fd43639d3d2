#pragma once

#include <kiv/Error.h>
#include <kiv/KDXDocument.h>

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "document/StatementTree.h"

namespace kiv {

namespace detail {

constexpr const char* kNeverClosed = "The object is never closed: its END is missing.";

[[noreturn]] inline void refuseCall(const char* function, const char* message) {
    throw internal::error("KDXDocument", function, message, errorTypeFailure);
}

[[noreturn]] inline void refuseData(const char* function, const char* message) {
    throw data::invalid("KDXDocument", function, message, errorTypeFailure);
}

}  // namespace detail

/// The statements, and how their nodes are numbered: by index, with the serial number that tells
/// whether it is still the same statement.
class KDXDocument::Impl {
public:
    explicit Impl(std::string text) : tree(std::move(text)) {}

    Node nodeOf(detail::Index index) const {
        return static_cast<Node>(std::uint64_t{tree.at(index).serial} << 32U | index);
    }
    Node nodeOrNone(detail::Index index) const {
        return index == detail::kNone ? Node::none : nodeOf(index);
    }

    /// Puts a node behind others. As an lvalue: emplace_back() returns a reference to a Node, with
    /// which its mangled name begins, so that an instance of it counts as a name of this library.
    void append(std::vector<Node>& nodes, detail::Index index) const {
        const Node node = nodeOf(index);
        nodes.push_back(node);
    }

    bool contains(Node node) const {
        const auto index = static_cast<detail::Index>(node);
        return index < tree.size() &&
               tree.at(index).serial == static_cast<std::uint64_t>(node) >> 32U &&
               tree.at(index).state != detail::Statement::State::removed;
    }

    // Each refuses what it does not find, in the name of a function.

    detail::Index indexOf(const char* function, Node node) const {
        if (!contains(node)) detail::refuseCall(function, "The node is none of this document's.");
        return static_cast<detail::Index>(node);
    }
    detail::Index statementOf(const char* function, Node node) const {
        const detail::Index index = indexOf(function, node);
        if (index == detail::kRoot) detail::refuseCall(function, "The root is no statement.");
        return index;
    }
    /// What holds statements: an object or the root.
    detail::Index holderOf(const char* function, Node node) const {
        const detail::Index index = indexOf(function, node);
        if (index != detail::kRoot && !tree.isObject(index))
            detail::refuseCall(function, "The node is no object.");
        return index;
    }

    detail::StatementTree tree;
};

}  // namespace kiv
