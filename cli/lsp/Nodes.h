#pragma once

#include <kiv/KDXDocument.h>

#include <cstddef>
#include <string>
#include <vector>

#include "OpenDocument.h"
#include "Protocol.h"

namespace kdx::lsp {

using kiv::KDXReader;
using kiv::MiniKDXParser;
using Tree = kiv::KDXDocument;
using Node = Tree::Node;
using Part = KDXReader::Part;

/// The place that a request asks about.
struct Cursor {
    const OpenDocument& document;
    const Tree& tree;
    std::size_t offset;
    Node node;  ///< the statement; none behind the last one
};

/// @throws RequestError when the text is not open.
Cursor cursorOf(const Documents& documents, const Json& params);
Cursor cursorAt(const OpenDocument& document, const Json& position);

bool isObject(const Tree& tree, Node node);
bool isParameter(const Tree& tree, Node node);

/// The object itself for an object or its END, else the statement.
Node subjectOf(const Tree& tree, Node node);

/// A part of a statement.
Span spanOf(const kiv::KDXReader& reader, Part part = Part::text);
Span spanOf(const Tree& tree, Node node, Part part = Part::text);

/// All bytes of a statement, its line end aside.
Span linesOf(const Tree& tree, Node node);

/// The path that matches an object, and those that a reader takes for the same one.
kiv::KDXSteps pathOf(const Tree& tree, Node object);

/// The same as text; empty for the root.
std::string pathTextOf(const Tree& tree, Node object);

/// What a reader takes for the same thing as an object or a parameter, in the order of the text:
/// objects of the same path, and parameters of the same name in them. Nothing else has any.
std::vector<Node> sameAs(const Tree& tree, Node node);

Json location(const Cursor& cursor, Node node);

}  // namespace kdx::lsp
