#include <kiv/KDXFormatting.h>

#include <algorithm>
#include <utility>

#include "Features.h"
#include "LineEdits.h"

namespace kdx::lsp {
namespace {

using kiv::KDXTextEdit;

std::vector<KDXTextEdit> layoutOf(const OpenDocument& document) {
    const std::string& text = document.text().text();
    return layoutEdits(text, kiv::KDXFormatting::formatKDX(text));
}

/// The bytes of the statements that a range touches.
std::pair<std::size_t, std::size_t> statementsIn(const OpenDocument& document, const Json& range) {
    const kiv::KDXDocument& tree = document.tree();
    const auto begin = document.offsetOf(range.at("start"));
    const auto end = document.offsetOf(range.at("end"));
    const auto first = tree.nodeAt(begin);
    const auto last = tree.nodeAt(end > begin ? end - 1 : end);
    const auto size = document.text().text().size();
    const auto none = kiv::KDXDocument::Node::none;
    return {first == none ? begin : tree.placeInSource(first).offset,
            last == none ? size : tree.placeInSource(last, tree.source(last).size()).offset};
}

}  // namespace

Json formatting(const Documents& documents, const Json& params) {
    const OpenDocument& document = documentOf(documents, params);
    return document.textEdits(layoutOf(document));
}

Json rangeFormatting(const Documents& documents, const Json& params) {
    const OpenDocument& document = documentOf(documents, params);
    const auto [begin, end] = statementsIn(document, params.at("range"));
    Json list = Json::array();
    for (const KDXTextEdit& edit : layoutOf(document))
        if (edit.offset >= begin && edit.offset + edit.length <= end)
            list.push_back(document.textEdit(edit));
    return list;
}

}  // namespace kdx::lsp
