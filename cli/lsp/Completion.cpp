#include <optional>
#include <set>

#include "Features.h"
#include "NestedReader.h"
#include "Nodes.h"

namespace kdx::lsp {
namespace {

using Around = NestedReader::Object;

enum class ItemKind : int { type = 7, parameter = 10, keyword = 14 };

/// The name characters in front of the cursor; nothing where no statement begins.
std::optional<std::string_view> typedAt(const Cursor& cursor) {
    const EditorText& text = cursor.document.text();
    const std::size_t lineBegin = text.lineBegin(cursor.offset);
    const bool isContinuation =
        cursor.node != Node::none && cursor.tree.placeInSource(cursor.node).offset < lineBegin;
    if (isContinuation) return std::nullopt;
    const std::string_view line(text.text().data() + lineBegin, cursor.offset - lineBegin);
    KDXReader reader(line);
    if (!reader.next()) return line;
    const std::size_t blanks = std::min(line.find_first_not_of(" \t"), line.size());
    const bool isName = reader.kind() == MiniKDXParser::lineEnd ||
                        (reader.kind() == MiniKDXParser::lineUnrecognised &&
                         reader.first().size() == reader.text().size());
    const bool isBlank = reader.kind() == MiniKDXParser::lineBlank && reader.comment().empty();
    return isName || isBlank ? std::optional(line.substr(blanks)) : std::nullopt;
}

/// What is offered in an object: what stands in objects of its type, in any of the open texts.
class Offers {
public:
    Offers(const Cursor& givenCursor, std::string_view typed)
        : cursor(givenCursor),
          typedRange(cursor.document.range(cursor.offset - typed.size(), cursor.offset)),
          typedBegin(cursor.offset - typed.size()),
          around(findAround()) {}

    Json find(const Documents& documents) {
        for (const auto& [uri, document] : documents) collect(document);
        Json items = Json::array();
        if (around) items.push_back(endItem());
        for (const std::string& name : parameters)
            if (present.count(name) == 0) items.push_back(item(name, " = ", ItemKind::parameter));
        for (const std::string& type : types) items.push_back(item(type, ": ", ItemKind::type));
        return items;
    }

private:
    std::optional<Around> findAround() const {
        NestedReader reader(cursor.document);
        const std::size_t lineBegin = cursor.document.text().lineBegin(cursor.offset);
        while (reader.next() && reader.begin() < lineBegin) continue;
        return reader.around() == nullptr ? std::nullopt : std::optional(*reader.around());
    }

    /// Whether an object is of the type of the one around the cursor.
    bool isLikeAround(const Around* object) const {
        if (object == nullptr || !around) return object == nullptr && !around;
        return object->type == around->type;
    }

    void collect(const OpenDocument& document) {
        NestedReader reader(document);
        while (reader.next()) {
            const Around* object = reader.around();
            const std::string name(reader->first());
            if (name.empty() || !isLikeAround(object)) continue;
            if (reader->kind() == MiniKDXParser::lineObject) types.insert(name);
            if (reader->kind() != MiniKDXParser::lineParameter) continue;
            parameters.insert(name);
            const bool isHere =
                &document == &cursor.document && around && object->begin == around->begin;
            if (isHere) present.insert(name);
        }
    }

    Json item(const std::string& name, const char* behind, ItemKind kind) const {
        return {{"label", name},
                {"kind", static_cast<int>(kind)},
                {"textEdit", {{"range", typedRange}, {"newText", name + behind}}}};
    }

    /// Moves the line under the beginning of its object.
    Json endItem() const {
        const std::size_t lineBegin = cursor.document.text().lineBegin(cursor.offset);
        Json json = item("END", "", ItemKind::keyword);
        json["detail"] = around->type;
        json["additionalTextEdits"] =
            Json::array({{{"range", cursor.document.range(lineBegin, typedBegin)},
                          {"newText", around->indentation}}});
        return json;
    }

    const Cursor& cursor;
    Json typedRange;
    std::size_t typedBegin;
    std::optional<Around> around;  // nothing at the top level
    std::set<std::string> parameters;
    std::set<std::string> types;
    std::set<std::string> present;  // parameters that the object has
};

}  // namespace

Json completion(const Documents& documents, const Json& params) {
    const Cursor cursor = cursorOf(documents, params);
    const std::optional<std::string_view> typed = typedAt(cursor);
    return typed ? Offers(cursor, *typed).find(documents) : Json::array();
}

}  // namespace kdx::lsp
