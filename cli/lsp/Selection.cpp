#include "Features.h"
#include "Nodes.h"

namespace kdx::lsp {
namespace {

// Each takes another one in, and JSON is written level by level.
constexpr std::size_t kMaxRanges = 200;

/// The statement at a place and its parts, and the objects around it, from the inside out.
std::vector<Span> spansAround(const Tree& tree, Node node) {
    std::vector<Span> spans;
    for (const Part part : {Part::first, Part::second, Part::comment, Part::text})
        spans.push_back(spanOf(tree, node, part));
    spans.push_back(linesOf(tree, node));
    for (; node != tree.root() && spans.size() < kMaxRanges; node = tree.parent(node)) {
        const Node end = isObject(tree, node) ? tree.endOf(node) : Node::none;
        if (end == Node::none) continue;
        spans.push_back({linesOf(tree, tree.next(node)).begin, linesOf(tree, end).begin});
        spans.push_back({linesOf(tree, node).begin, linesOf(tree, end).end});
    }
    return spans;
}

bool isWider(const Span& a, const Span& b) {
    return a.begin <= b.begin && a.end >= b.end && a.end - a.begin > b.end - b.begin;
}

/// Each of them that holds the place and more than the one before; at last the whole text.
std::vector<Span> selectable(const Cursor& cursor) {
    std::vector<Span> all;
    if (cursor.node != Node::none) all = spansAround(cursor.tree, cursor.node);
    all.push_back({0, cursor.document.text().text().size()});
    std::vector<Span> spans;
    for (const Span& span : all)
        if (span.touches(cursor.offset) && (spans.empty() || isWider(span, spans.back())))
            spans.push_back(span);
    return spans;
}

Json selection(const Cursor& cursor) {
    const std::vector<Span> spans = selectable(cursor);
    Json json;
    for (auto span = spans.rbegin(); span != spans.rend(); ++span) {
        Json inner = {{"range", cursor.document.range(span->begin, span->end)}};
        if (!json.is_null()) inner["parent"] = std::move(json);
        json = std::move(inner);
    }
    return json;
}

}  // namespace

Json selectionRanges(const Documents& documents, const Json& params) {
    const OpenDocument& document = documentOf(documents, params);
    Json list = Json::array();
    for (const Json& position : params.at("positions"))
        list.push_back(selection(cursorAt(document, position)));
    return list;
}

}  // namespace kdx::lsp
