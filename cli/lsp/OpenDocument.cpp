#include "OpenDocument.h"
#include "text/ShownText.h"

#include <algorithm>
#include <string_view>
#include <utility>

namespace kdx::lsp {
namespace {

// More are no help to anyone who sees them in an editor.
constexpr std::size_t kMaxProblems = 1000;

/// The same edit without the bytes at its ends that stay, by whole characters.
kiv::KDXTextEdit shortened(std::string_view text, const kiv::KDXTextEdit& edit) {
    const std::string_view old = text.substr(edit.offset, edit.length);
    const std::string_view now = edit.replacement;
    const auto differ = std::mismatch(old.begin(), old.end(), now.begin(), now.end());
    const std::size_t same =
        characterBegin(old, static_cast<std::size_t>(differ.first - old.begin()));
    const std::size_t limit = std::min(old.size(), now.size()) - same;
    std::size_t tail = 0;
    while (tail < limit && old[old.size() - tail - 1] == now[now.size() - tail - 1]) ++tail;
    while (tail > 0 && continuesCharacter(old[old.size() - tail])) --tail;
    return {edit.offset + same, old.size() - same - tail,
            std::string(now.substr(same, now.size() - same - tail))};
}

/// The same edit as one for each line that changes, where as many lines stay.
std::vector<kiv::KDXTextEdit> byLine(std::string_view text, const kiv::KDXTextEdit& edit) {
    std::string_view old = text.substr(edit.offset, edit.length);
    std::string_view now = edit.replacement;
    if (std::count(old.begin(), old.end(), '\n') != std::count(now.begin(), now.end(), '\n'))
        return {edit};
    std::vector<kiv::KDXTextEdit> edits;
    for (std::size_t offset = edit.offset; !old.empty() || !now.empty();) {
        const std::size_t oldEnd = std::min(old.find('\n'), old.size() - 1) + 1;
        const std::size_t nowEnd = std::min(now.find('\n'), now.size() - 1) + 1;
        if (old.substr(0, oldEnd) != now.substr(0, nowEnd))
            edits.push_back({offset, oldEnd, std::string(now.substr(0, nowEnd))});
        offset += oldEnd;
        old.remove_prefix(oldEnd);
        now.remove_prefix(nowEnd);
    }
    return edits;
}

Json asJson(const Position& position) {
    return {{"line", position.line}, {"character", position.character}};
}

}  // namespace

OpenDocument::OpenDocument(std::string givenUri, const Json& textDocument, std::size_t maxDepth)
    : name(std::move(givenUri)),
      content(textAt(textDocument, "text")),
      currentVersion(textDocument.at("version").get<std::int64_t>()) {
    options.maxDepth = maxDepth;
    options.maxProblems = kMaxProblems;
}

void OpenDocument::change(const Json& changes, const Json& version) {
    currentVersion = version.get<std::int64_t>();
    unreported = true;
    problems.reset();
    statements.reset();
    for (const Json& change : changes) {
        const std::string& replacement = textAt(change, "text");
        if (change.contains("range"))
            content.replace(spanOf(change["range"]), replacement);
        else
            content = EditorText(replacement);
    }
}

const kiv::KDXCheck::Report& OpenDocument::report() const {
    if (!problems) problems = kiv::KDXCheck::check(content.text(), options);
    return *problems;
}

const kiv::KDXDocument& OpenDocument::tree() const {
    if (!statements) statements.emplace(content.text());
    return *statements;
}

Json OpenDocument::range(std::size_t begin, std::size_t end) const {
    return {{"start", asJson(content.positionOf(begin))}, {"end", asJson(content.positionOf(end))}};
}

std::size_t OpenDocument::offsetOf(const Json& position) const {
    return content.offsetOf({countAt(position, "line"), countAt(position, "character")});
}

Span OpenDocument::spanOf(const Json& range) const {
    return {offsetOf(range.at("start")), offsetOf(range.at("end"))};
}

Json OpenDocument::textEdit(const kiv::KDXTextEdit& whole) const {
    const kiv::KDXTextEdit edit = shortened(content.text(), whole);
    // No position lies between CR and LF: an edit that begins or ends there takes the other in.
    const std::size_t end = edit.offset + edit.length;
    const bool fromLineFeed = content.isInsideLineEnd(edit.offset);
    const bool toReturn = content.isInsideLineEnd(end);
    const std::string wider =
        (fromLineFeed ? "\r" : "") + edit.replacement + (toReturn ? "\n" : "");
    return {{"range", range(edit.offset, end + (toReturn ? 1 : 0))}, {"newText", wider}};
}

Json OpenDocument::textEdits(const std::vector<kiv::KDXTextEdit>& edits) const {
    Json list = Json::array();
    for (const kiv::KDXTextEdit& edit : edits)
        for (const kiv::KDXTextEdit& line : byLine(content.text(), edit))
            list.push_back(textEdit(line));
    return list;
}

Json OpenDocument::workspaceEdit(const std::vector<kiv::KDXTextEdit>& edits) const {
    return {{"changes", {{name, textEdits(edits)}}}};
}

}  // namespace kdx::lsp
