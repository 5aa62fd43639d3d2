#include "Features.h"
#include "Nodes.h"

namespace kdx::lsp {
namespace {

/// From an object to what opens it first, or to its END; from an END to its object; from a
/// parameter to the one that readers see.
Node targetOf(const Tree& tree, Node node) {
    const Node subject = subjectOf(tree, node);
    if (subject != node) return subject;
    const std::vector<Node> same = sameAs(tree, node);
    if (same.empty()) return Node::none;
    if (isObject(tree, node) && same.front() == node) return tree.endOf(node);
    return same.front();
}

}  // namespace

Json definition(const Documents& documents, const Json& params) {
    const Cursor cursor = cursorOf(documents, params);
    const Node target = targetOf(cursor.tree, cursor.node);
    return target == Node::none ? Json() : location(cursor, target);
}

Json references(const Documents& documents, const Json& params) {
    const Cursor cursor = cursorOf(documents, params);
    const bool withFirst = params.at("context").at("includeDeclaration").get<bool>();
    const std::vector<Node> same = sameAs(cursor.tree, subjectOf(cursor.tree, cursor.node));
    Json list = Json::array();
    for (const Node node : same)
        if (withFirst || node != same.front()) list.push_back(location(cursor, node));
    return list;
}

Json highlight(const Documents& documents, const Json& params) {
    const Cursor cursor = cursorOf(documents, params);
    const Node subject = subjectOf(cursor.tree, cursor.node);
    std::vector<Node> nodes = sameAs(cursor.tree, subject);
    if (isObject(cursor.tree, subject)) nodes = {subject, cursor.tree.endOf(subject)};
    Json list = Json::array();
    for (const Node node : nodes)
        if (node != Node::none) list.push_back({{"range", location(cursor, node)["range"]}});
    return list;
}

}  // namespace kdx::lsp
