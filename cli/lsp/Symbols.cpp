#include <cctype>
#include <utility>

#include "Features.h"
#include "NestedReader.h"
#include "Nodes.h"

namespace kdx::lsp {
namespace {

// JSON is written level by level. What is deeper is left out.
constexpr std::size_t kDeepestSymbol = 200;
constexpr std::size_t kMaxMatches = 500;

constexpr int kNoSymbol = 0;
constexpr int kProperty = 7;  // of SymbolKind
constexpr int kObject = 19;
constexpr int kEvent = 24;

int symbolKindOf(const KDXReader& reader) {
    if (reader.kind() == MiniKDXParser::lineObject) return kObject;
    if (reader.kind() == MiniKDXParser::lineParameter) return kProperty;
    return reader.kind() == MiniKDXParser::lineAction ? kEvent : kNoSymbol;
}

std::string titleOf(std::string_view type, std::string_view name) {
    return std::string(type).append(name.empty() ? "" : ": ").append(name);
}

/// A symbol has to have a name: where there is none, the whole statement is it.
std::string nameOf(const KDXReader& reader) {
    if (reader.first().empty()) return std::string(reader.text());
    return titleOf(reader.first(), symbolKindOf(reader) == kObject ? reader.second() : "");
}

/// The objects, parameters and actions of a text, each in the object around it.
class Outline {
public:
    explicit Outline(const OpenDocument& givenDocument)
        : document(givenDocument), reader(document.text().text()) {
        levels.push_back(Json::object());
    }

    Json read() {
        while (reader.next()) {
            if (reader.depth() >= kDeepestSymbol) continue;
            if (reader.kind() == MiniKDXParser::lineEnd && levels.size() > 1)
                close(spanOf(reader).end);
            if (symbolKindOf(reader) != kNoSymbol) add();
        }
        while (levels.size() > 1) close(document.text().text().size());
        return std::move(children(levels.front()));
    }

private:
    static Json& children(Json& symbol) {
        Json& list = symbol["children"];
        if (list.is_null()) list = Json::array();
        return list;
    }

    void add() {
        const Span span = spanOf(reader);
        const Json range = document.range(span.begin, span.end);
        Json symbol = {{"name", nameOf(reader)},
                       {"kind", symbolKindOf(reader)},
                       {"range", range},
                       {"selectionRange", range}};
        if (symbolKindOf(reader) == kObject) {
            levels.push_back(std::move(symbol));
            return;
        }
        if (symbolKindOf(reader) == kProperty) symbol["detail"] = reader.second();
        children(levels.back()).push_back(std::move(symbol));
    }

    void close(std::size_t end) {
        Json symbol = std::move(levels.back());
        levels.pop_back();
        symbol["range"]["end"] = document.position(end);
        children(levels.back()).push_back(std::move(symbol));
    }

    const OpenDocument& document;
    KDXReader reader;
    std::vector<Json> levels;  // of the open objects, that of the text first
};

/// Whether the letters of a query stand in a text in their order, as editors search.
bool matches(std::string_view text, std::string_view query) {
    const auto lowered = [](char c) { return std::tolower(static_cast<unsigned char>(c)); };
    for (const char c : text)
        if (!query.empty() && lowered(c) == lowered(query.front())) query.remove_prefix(1);
    return query.empty();
}

/// Adds to a list what a query finds in a text.
void findSymbols(const OpenDocument& document, std::string_view query, Json& found) {
    NestedReader reader(document);
    while (found.size() < kMaxMatches && reader.next()) {
        if (symbolKindOf(*reader) == kNoSymbol || !matches(nameOf(*reader), query)) continue;
        const Span span = spanOf(*reader);
        const Json range = document.range(span.begin, span.end);
        const NestedReader::Object* object = reader.around();
        found.push_back(
            {{"name", nameOf(*reader)},
             {"kind", symbolKindOf(*reader)},
             {"location", {{"uri", document.uri()}, {"range", range}}},
             {"containerName", object == nullptr ? "" : titleOf(object->type, object->name)}});
    }
}

}  // namespace

Json documentSymbols(const Documents& documents, const Json& params) {
    return Outline(documentOf(documents, params)).read();
}

Json workspaceSymbols(const Documents& documents, const Json& params) {
    const std::string& query = textAt(params, "query");
    Json found = Json::array();
    for (const auto& [uri, document] : documents) findSymbols(document, query, found);
    return found;
}

}  // namespace kdx::lsp
