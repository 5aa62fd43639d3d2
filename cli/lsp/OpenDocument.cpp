#include "OpenDocument.h"

#include <utility>

namespace kdx::lsp {
namespace {

// More are no help to anyone who sees them in an editor.
constexpr std::size_t kMaxProblems = 1000;

constexpr const char* kNotOpen = "the document is not open";

}  // namespace

OpenDocument::OpenDocument(std::string givenUri, const Json& textDocument, std::size_t maxDepth)
    : name(std::move(givenUri)),
      content(textAt(textDocument, "text")),
      currentVersion(textDocument.at("version").get<std::int64_t>()) {
    options.maxDepth = maxDepth;
    options.maxProblems = kMaxProblems;
}

void OpenDocument::change(const Json& changes, const Json& version) {
    unreported = true;
    problems.reset();
    statements.reset();
    for (const Json& change : changes) {
        const std::string& replacement = textAt(change, "text");
        if (change.contains("range"))
            content.replace(offsetOf(change["range"].at("start")),
                            offsetOf(change["range"].at("end")), replacement);
        else
            content = EditorText(replacement);
    }
    currentVersion = version.get<std::int64_t>();
}

const kiv::KDXCheck::Report& OpenDocument::report() const {
    if (!problems) problems = kiv::KDXCheck::check(content.text(), options);
    return *problems;
}

const kiv::KDXDocument& OpenDocument::tree() const {
    if (!statements) statements.emplace(content.text());
    return *statements;
}

Json OpenDocument::position(std::size_t offset) const {
    const Position position = content.positionOf(offset);
    return {{"line", position.line}, {"character", position.character}};
}

Json OpenDocument::range(std::size_t begin, std::size_t end) const {
    Json start = position(begin);
    return {{"start", std::move(start)}, {"end", position(end)}};
}

std::size_t OpenDocument::offsetOf(const Json& position) const {
    return content.offsetOf({countAt(position, "line"), countAt(position, "character")});
}

Json OpenDocument::textEdit(const kiv::KDXTextEdit& edit) const {
    // No position lies between CR and LF: an edit that begins or ends there takes the other in.
    const std::size_t end = edit.offset + edit.length;
    const bool fromLineFeed = content.isInsideLineEnd(edit.offset);
    const bool toReturn = content.isInsideLineEnd(end);
    const std::string wider =
        (fromLineFeed ? "\r" : "") + edit.replacement + (toReturn ? "\n" : "");
    return {{"range", range(edit.offset - (fromLineFeed ? 1 : 0), end + (toReturn ? 1 : 0))},
            {"newText", wider}};
}

Json OpenDocument::textEdits(const std::vector<kiv::KDXTextEdit>& edits) const {
    Json list = Json::array();
    for (const kiv::KDXTextEdit& edit : edits) list.push_back(textEdit(edit));
    return list;
}

const OpenDocument& documentOf(const Documents& documents, const Json& params) {
    const auto found = documents.find(textAt(params.at("textDocument"), "uri"));
    if (found == documents.end()) throw RequestError(ErrorCode::invalidParams, kNotOpen);
    return found->second;
}

OpenDocument& documentOf(Documents& documents, const Json& params) {
    return const_cast<OpenDocument&>(documentOf(std::as_const(documents), params));
}

}  // namespace kdx::lsp
