#pragma once

#include <kiv/KDXCheck.h>
#include <kiv/KDXDocument.h>

#include <cstddef>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "EditorText.h"
#include "Protocol.h"

namespace kdx::lsp {

/// A text that is open in the editor, and what has been found out about it since it last changed.
class OpenDocument {
public:
    /// @param maxDepth so many objects may be open at a time.
    OpenDocument(std::string givenUri, const Json& textDocument, std::size_t maxDepth);

    const std::string& uri() const { return name; }
    const EditorText& text() const { return content; }
    const Json& version() const { return currentVersion; }

    /// Makes the changes of a notification, one on the outcome of the other.
    void change(const Json& changes, const Json& version);

    /// The problems and the tree, found when they are first asked for. They live until a change.
    const kiv::KDXCheck::Report& report() const;
    const kiv::KDXDocument& tree() const;

    /// Whether the client has not been told the problems of the text as it is now.
    bool isUnreported() const { return unreported; }
    void setReported() { unreported = false; }

    // ---- As the protocol writes places.

    Json range(std::size_t begin, std::size_t end) const;
    std::size_t offsetOf(const Json& position) const;
    Span spanOf(const Json& range) const;
    /// An edit as short as can be.
    Json textEdit(const kiv::KDXTextEdit& whole) const;
    Json textEdits(const std::vector<kiv::KDXTextEdit>& edits) const;
    /// The same as a change of this text among all.
    Json workspaceEdit(const std::vector<kiv::KDXTextEdit>& edits) const;

private:
    std::string name;
    EditorText content;
    Json currentVersion;
    kiv::KDXCheck::Options options;
    bool unreported = true;
    mutable std::optional<kiv::KDXCheck::Report> problems;
    mutable std::optional<kiv::KDXDocument> statements;
};

/// The texts that are open, by their names.
using Documents = std::map<std::string, OpenDocument>;

/// The text that a request speaks of, of texts that may change or not.
/// @throws RequestError when it is not open.
template <typename Texts>
auto& documentOf(Texts& documents, const Json& params) {
    const auto found = documents.find(textAt(params.at("textDocument"), "uri"));
    if (found != documents.end()) return found->second;
    throw RequestError(ErrorCode::invalidParams, "the document is not open");
}

}  // namespace kdx::lsp
