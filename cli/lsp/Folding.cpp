#include <optional>
#include <utility>

#include "Features.h"
#include "Nodes.h"

namespace kdx::lsp {
namespace {

/// What can be shown as its first line alone.
class Folds {
public:
    explicit Folds(const OpenDocument& givenDocument)
        : document(givenDocument), reader(document.text().text()) {}

    Json find() {
        while (reader.next()) {
            const std::size_t line = lineAt(reader.placeInSource(0).offset);
            const bool isComment =
                reader.kind() == MiniKDXParser::lineBlank && !reader.comment().empty();
            if (!isComment) endComments();
            if (isComment) addComment(line);
            if (reader.kind() == MiniKDXParser::lineObject) objects.push_back(line);
            if (reader.kind() == MiniKDXParser::lineEnd) endObject(line);
            if (reader.isContinued()) add(line, lastLine(), nullptr);
        }
        endComments();
        return std::move(folds);
    }

private:
    std::size_t lineAt(std::size_t offset) const { return document.text().positionOf(offset).line; }

    std::size_t lastLine() const {
        const std::size_t length = reader.source().size() - reader.lineEnd().size();
        return lineAt(reader.placeInSource(length).offset);
    }

    void addComment(std::size_t line) {
        if (!comments) comments = {line, line};
        comments->second = line;
    }

    void endComments() {
        if (comments) add(comments->first, comments->second, "comment");
        comments.reset();
    }

    /// The END stays to be seen.
    void endObject(std::size_t line) {
        if (objects.empty()) return;
        add(objects.back(), line - 1, nullptr);
        objects.pop_back();
    }

    void add(std::size_t first, std::size_t last, const char* kind) {
        if (last <= first) return;
        Json fold = {{"startLine", first}, {"endLine", last}};
        if (kind != nullptr) fold["kind"] = kind;
        folds.push_back(std::move(fold));
    }

    const OpenDocument& document;
    KDXReader reader;
    Json folds = Json::array();
    std::vector<std::size_t> objects;                             // where those that are open begin
    std::optional<std::pair<std::size_t, std::size_t>> comments;  // the first and the last of a run
};

}  // namespace

Json foldingRanges(const Documents& documents, const Json& params) {
    return Folds(documentOf(documents, params)).find();
}

}  // namespace kdx::lsp
