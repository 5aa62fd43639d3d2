#include "Nodes.h"

#include <algorithm>

namespace kdx::lsp {
namespace {

/// The objects around a node and itself, from the top level down.
std::vector<Node> objectsDownTo(const Tree& tree, Node object) {
    std::vector<Node> objects;
    for (; object != tree.root(); object = tree.parent(object)) objects.push_back(object);
    std::reverse(objects.begin(), objects.end());
    return objects;
}

}  // namespace

Cursor cursorAt(const OpenDocument& document, const Json& position) {
    const std::size_t offset = document.offsetOf(position);
    const Tree& tree = document.tree();
    Node node = tree.nodeAt(offset);
    // Behind a last line without a line end is still in it.
    if (node == Node::none && offset > 0 && document.text().lineBegin(offset) < offset)
        node = tree.nodeAt(offset - 1);
    return {document, tree, offset, node};
}

Cursor cursorOf(const Documents& documents, const Json& params) {
    const OpenDocument& document = documentOf(documents, params);
    return cursorAt(document, params.at("position"));
}

bool isObject(const Tree& tree, Node node) {
    return node != Node::none && tree.kind(node) == MiniKDXParser::lineObject;
}

bool isParameter(const Tree& tree, Node node) {
    return node != Node::none && tree.kind(node) == MiniKDXParser::lineParameter;
}

Node subjectOf(const Tree& tree, Node node) {
    if (node == Node::none || tree.kind(node) != MiniKDXParser::lineEnd) return node;
    return tree.parent(node) == tree.root() ? node : tree.parent(node);
}

Span spanOf(const kiv::KDXReader& reader, Part part) {
    return {reader.placeOf(part).offset, reader.placeOf(part, reader.part(part).size()).offset};
}

Span spanOf(const Tree& tree, Node node, Part part) {
    kiv::KDXReader reader(tree.source(node));
    reader.next();
    const std::size_t length = reader.part(part).size();
    return {tree.placeOf(node, part).offset, tree.placeOf(node, part, length).offset};
}

Span linesOf(const Tree& tree, Node node) {
    const std::string_view source = tree.source(node);
    const std::size_t begin = tree.placeInSource(node).offset;
    return {begin, begin + source.find_last_not_of("\r\n") + 1};
}

kiv::KDXSteps pathOf(const Tree& tree, Node object) {
    kiv::KDXSteps path;
    for (const Node node : objectsDownTo(tree, object))
        path.push_back({tree.first(node), tree.second(node), false});
    return path;
}

std::string pathTextOf(const Tree& tree, Node object) {
    std::string path;
    for (const Node node : objectsDownTo(tree, object))
        kiv::appendLevel(path, tree.first(node), tree.second(node));
    return path;
}

std::vector<Node> sameAs(const Tree& tree, Node node) {
    if (isObject(tree, node)) return tree.findObjects(pathOf(tree, node));
    if (!isParameter(tree, node)) return {};
    return tree.findParameters(pathOf(tree, tree.parent(node)), tree.first(node));
}

Json location(const Cursor& cursor, Node node) {
    const Span span = spanOf(cursor.tree, node);
    return {{"uri", cursor.document.uri()}, {"range", cursor.document.range(span.begin, span.end)}};
}

}  // namespace kdx::lsp
