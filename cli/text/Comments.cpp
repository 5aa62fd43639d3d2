#include "Comments.h"

#include <string_view>

namespace kdx {
namespace {

using kiv::KDXDocument;
using kiv::MiniKDXParser;
using Node = KDXDocument::Node;

void removeComment(KDXDocument& document, Node node) {
    if (document.isComment(node)) return document.remove(node);
    if (document.kind(node) == MiniKDXParser::lineVerbatim) return;
    if (document.source(node).find('#') == std::string_view::npos) return;
    document.setComment(node, "");
}

}  // namespace

void removeComments(KDXDocument& document) {
    for (Node node = document.next(document.root()); node != Node::none;) {
        const Node behind = document.next(node);
        removeComment(document, node);
        node = behind;
    }
}

}  // namespace kdx
