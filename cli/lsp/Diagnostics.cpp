#include "Features.h"
#include "text/ShownText.h"

namespace kdx::lsp {
namespace {

using kiv::KDXCheck::Problem;

constexpr std::size_t kLongestQuote = 200;

/// Another place, with what stands there.
Json related(const OpenDocument& document, std::size_t offset) {
    const std::string text = document.text().text().substr(offset, kLongestQuote);
    return {{"location", {{"uri", document.uri()}, {"range", document.range(offset, offset)}}},
            {"message", shown(text.substr(0, text.find_first_of("\r\n")))}};
}

}  // namespace

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

Json diagnostics(const OpenDocument& document) {
    Json list = Json::array();
    for (const Problem& problem : document.report().problems)
        list.push_back(diagnostic(document, problem));
    return list;
}

}  // namespace kdx::lsp
