#include <cctype>
#include <utility>

#include "Features.h"
#include "NestedReader.h"
#include "Nodes.h"

namespace kdx::lsp {
namespace {

// Editors read JSON level by level. What is deeper is left out.
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

/// The objects, parameters and actions of a text, each in the object around it. They are written
/// one by one: all of them as values would take ten times the memory of their JSON.
class Outline {
public:
    explicit Outline(const OpenDocument& givenDocument)
        : document(givenDocument), reader(document.text().text()) {}

    std::string write() {
        while (reader.next()) {
            if (reader.depth() >= kDeepestSymbol) continue;
            if (reader.kind() == MiniKDXParser::lineEnd && !begins.empty())
                close(spanOf(reader).end);
            if (symbolKindOf(reader) != kNoSymbol) add();
        }
        while (!begins.empty()) close(document.text().text().size());
        json += ']';
        return std::move(json);
    }

private:
    void add() {
        const Span span = spanOf(reader);
        const Json range = document.range(span.begin, span.end);
        Json symbol = {
            {"name", nameOf(reader)}, {"kind", symbolKindOf(reader)}, {"selectionRange", range}};
        if (symbolKindOf(reader) == kProperty) symbol["detail"] = reader.second();
        if (symbolKindOf(reader) != kObject) symbol["range"] = range;
        if (json.back() != '[') json += ',';
        json += written(symbol);
        if (symbolKindOf(reader) == kObject) open(span.begin);
    }

    /// Its range is known at its end.
    void open(std::size_t begin) {
        json.back() = ',';
        json += R"("children":[)";
        begins.push_back(begin);
    }

    void close(std::size_t end) {
        json += R"(],"range":)" + written(document.range(begins.back(), end)) + '}';
        begins.pop_back();
    }

    const OpenDocument& document;
    KDXReader reader;
    std::string json = "[";
    std::vector<std::size_t> begins;  // of the open objects
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

std::string documentSymbols(const Documents& documents, const Json& params) {
    return Outline(documentOf(documents, params)).write();
}

Json workspaceSymbols(const Documents& documents, const Json& params) {
    const std::string& query = textAt(params, "query");
    Json found = Json::array();
    for (const auto& [uri, document] : documents) findSymbols(document, query, found);
    return found;
}

}  // namespace kdx::lsp
