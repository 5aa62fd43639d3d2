#include <algorithm>

#include "Features.h"

namespace kdx::lsp {
namespace {

using kiv::KDXCheck::Problem;
using kiv::KDXCheck::Severity;

enum class DiagnosticSeverity : int { error = 1, warning = 2 };

DiagnosticSeverity severityOf(const Problem& problem) {
    switch (problem.severity) {
        case Severity::error: return DiagnosticSeverity::error;
        case Severity::warning: return DiagnosticSeverity::warning;
    }
    return DiagnosticSeverity::error;
}

/// Another place, with what stands there.
Json related(const OpenDocument& document, std::size_t offset) {
    const std::string& text = document.text().text();
    const std::size_t end = std::min(text.find_first_of("\r\n", offset), text.size());
    return {{"location", {{"uri", document.uri()}, {"range", document.range(offset, end)}}},
            {"message", text.substr(offset, end - offset)}};
}

}  // namespace

Json diagnostic(const OpenDocument& document, const Problem& problem) {
    Json json = {{"range", document.range(problem.begin.offset, problem.end.offset)},
                 {"severity", static_cast<int>(severityOf(problem))},
                 {"code", problem.rule},
                 {"source", "kdx"},
                 {"message", problem.message}};
    if (problem.reference)
        json["relatedInformation"] = Json::array({related(document, problem.reference->offset)});
    return json;
}

Json diagnostics(const OpenDocument& document) {
    Json list = Json::array();
    for (const Problem& problem : document.report().problems)
        list.push_back(diagnostic(document, problem));
    return list;
}

}  // namespace kdx::lsp
