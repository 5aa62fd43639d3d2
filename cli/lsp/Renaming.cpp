#include "Features.h"
#include "Nodes.h"

namespace kdx::lsp {
namespace {

constexpr const char* kNoName = "here is no name of an object or a parameter";
constexpr const char* kTaken = "the name is taken: readers would take the two for one";

/// What is renamed: the type or the name of an object, or the name of a parameter.
Part partAt(const Cursor& cursor) {
    const bool isNamed = !cursor.tree.second(cursor.node).empty();
    if (!isObject(cursor.tree, cursor.node) || !isNamed) return Part::first;
    const Span type = spanOf(cursor.tree, cursor.node, Part::first);
    return type.touches(cursor.offset) ? Part::first : Part::second;
}

bool hasName(const Cursor& cursor) {
    if (!isObject(cursor.tree, cursor.node) && !isParameter(cursor.tree, cursor.node)) return false;
    return spanOf(cursor.tree, cursor.node, partAt(cursor)).touches(cursor.offset);
}

/// Whether there is already what the new name would stand for.
bool isTaken(const Cursor& cursor, Part part, const std::string& name) {
    const Tree& tree = cursor.tree;
    if (isParameter(tree, cursor.node))
        return !tree.findParameters(pathOf(tree, tree.parent(cursor.node)), name).empty();
    kiv::KDXSteps path = pathOf(tree, cursor.node);
    (part == Part::first ? path.back().type : path.back().name) = name;
    return !tree.findObjects(path).empty();
}

void renameNode(Tree& tree, Node node, Part part, const std::string& name) {
    if (isObject(tree, node) && part == Part::first) return tree.setType(node, name);
    tree.setName(node, name);
}

}  // namespace

Json prepareRename(const Documents& documents, const Json& params) {
    const Cursor cursor = cursorOf(documents, params);
    if (!hasName(cursor)) return nullptr;
    const Part part = partAt(cursor);
    const Span span = spanOf(cursor.tree, cursor.node, part);
    return {{"range", cursor.document.range(span.begin, span.end)},
            {"placeholder", part == Part::first ? cursor.tree.first(cursor.node)
                                                : cursor.tree.second(cursor.node)}};
}

Json rename(const Documents& documents, const Json& params) {
    const Cursor cursor = cursorOf(documents, params);
    const std::string& name = textAt(params, "newName");
    if (!hasName(cursor)) throw RequestError(ErrorCode::requestFailed, kNoName);
    const Part part = partAt(cursor);
    if (isTaken(cursor, part, name)) throw RequestError(ErrorCode::requestFailed, kTaken);
    Tree renamed = cursor.tree;
    for (const Node node : sameAs(cursor.tree, cursor.node)) renameNode(renamed, node, part, name);
    return cursor.document.workspaceEdit(renamed.textEdits());
}

}  // namespace kdx::lsp
