#include <algorithm>

#include "Features.h"
#include "Nodes.h"
#include "text/ShownText.h"

namespace kdx::lsp {
namespace {

using kiv::KDXTextEdit;
using kiv::KDXCheck::Problem;

constexpr const char* kQuickFix = "quickfix";
constexpr const char* kFixAll = "source.fixAll";

constexpr std::size_t kLongestQuote = 200;

/// Another place, with what stands there.
Json related(const OpenDocument& document, std::size_t offset) {
    const std::string text = document.text().text().substr(offset, kLongestQuote);
    return {{"location", {{"uri", document.uri()}, {"range", document.range(offset, offset)}}},
            {"message", shown(text.substr(0, text.find_first_of("\r\n")))}};
}

Json diagnostic(const OpenDocument& document, const Problem& problem) {
    // 1 is an error in the protocol, 2 a warning.
    Json json = {{"range", document.range(problem.begin.offset, problem.end.offset)},
                 {"severity", problem.severity == kiv::KDXCheck::Severity::error ? 1 : 2},
                 {"code", problem.rule},
                 {"source", "kdx"},
                 {"message", problem.message}};
    if (problem.reference)
        json["relatedInformation"] = Json::array({related(document, problem.reference->offset)});
    return json;
}

/// Whether the client wants actions of a kind: it names none, the kind, or one above it.
bool isWanted(const Json& context, const std::string& kind) {
    const auto only = context.find("only");
    if (only == context.end()) return true;
    return std::any_of(only->begin(), only->end(), [&](const Json& wanted) {
        const auto& name = wanted.get_ref<const std::string&>();
        return (kind + '.').compare(0, name.size() + 1, name + '.') == 0;
    });
}

Json quickFix(const OpenDocument& document, const Problem& problem) {
    return {{"title", problem.fix->title},
            {"kind", kQuickFix},
            {"diagnostics", {diagnostic(document, problem)}},
            {"isPreferred", problem.fix->safe},
            {"edit", document.workspaceEdit(problem.fix->edits)}};
}

/// The edits of all safe fixes, apart from those that overlap one before them.
std::vector<KDXTextEdit> safeEdits(const OpenDocument& document) {
    std::vector<KDXTextEdit> edits;
    std::size_t end = 0;
    for (const Problem& problem : document.report().problems) {
        if (!problem.fix || !problem.fix->safe || problem.fix->edits.front().offset < end) continue;
        for (const KDXTextEdit& edit : problem.fix->edits) edits.push_back(edit);
        end = edits.back().offset + edits.back().length;
    }
    return edits;
}

}  // namespace

Json diagnostics(const OpenDocument& document) {
    Json list = Json::array();
    for (const Problem& problem : document.report().problems)
        list.push_back(diagnostic(document, problem));
    return list;
}

Json codeActions(const Documents& documents, const Json& params) {
    const OpenDocument& document = documentOf(documents, params);
    const Json& context = params.at("context");
    const Span asked = document.spanOf(params.at("range"));
    Json actions = Json::array();
    for (const Problem& problem : document.report().problems)
        if (problem.fix && problem.begin.offset <= asked.end && problem.end.offset >= asked.begin &&
            isWanted(context, kQuickFix))
            actions.push_back(quickFix(document, problem));
    const std::vector<KDXTextEdit> edits = safeEdits(document);
    if (!edits.empty() && isWanted(context, kFixAll))
        actions.push_back({{"title", "Make all safe fixes"},
                           {"kind", kFixAll},
                           {"edit", document.workspaceEdit(edits)}});
    return actions;
}

}  // namespace kdx::lsp
