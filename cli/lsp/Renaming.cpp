#include "Features.h"
#include "Nodes.h"
#include "edits/Edit.h"

namespace kdx::lsp {
namespace {

constexpr const char* kNoName = "here is no name of an object or a parameter";

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

RenameEdit renaming(const Cursor& cursor, const std::string& name) {
    const Tree& tree = cursor.tree;
    if (isParameter(tree, cursor.node))
        return {{pathOf(tree, tree.parent(cursor.node)), tree.first(cursor.node)}, name, {}};
    const Target object{pathOf(tree, cursor.node), {}};
    if (partAt(cursor) == Part::first) return {object, {}, name};
    return {object, name, {}};
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
    Tree renamed = cursor.tree;
    applyEdits(renamed, {{renaming(cursor, name)}});
    return cursor.document.workspaceEdit(renamed.textEdits());
}

}  // namespace kdx::lsp
