// A client of the language server that edits a text at random and asks whatever there is to ask:
// the server's text is the client's text, a request gets one answer, and layout changes no meaning.
// Another server is handed the same messages with bytes changed.

#include <kiv/KDXReader.h>
#include <kiv/KDXText.h>

#include <array>
#include <random>

#include "Support.h"
#include "lsp/Frame.h"
#include "lsp/Server.h"

namespace {

using kdx::lsp::Json;

constexpr std::array<const char*, 13> kPieces = {
    "\n", "\r\n", "\r", "END\n", "A: b\n", "x=1", "\\", "#", "  ", "\u00E9", "\U0001D11E", "", ":"};
constexpr std::array<const char*, 16> kMethods = {
    "codeAction",     "completion",          "definition",           "documentHighlight",
    "documentSymbol", "formatting",          "foldingRange",         "hover",
    "prepareRename",  "rangeFormatting",     "references",           "rename",
    "selectionRange", "semanticTokens/full", "semanticTokens/range", "noSuch"};

/// As an editor counts: from the beginning of the text, character by character.
Json positionIn(const std::string& text, std::size_t offset) {
    std::size_t line = 0;
    std::size_t units = 0;
    for (std::size_t i = 0; i < offset; ++i) {
        const auto c = static_cast<unsigned char>(text[i]);
        const bool ends = c == '\n' || (c == '\r' && text.compare(i + 1, 1, "\n") != 0);
        units = ends ? 0 : units + (c >= 0xF0 ? 2 : (c & 0xC0U) == 0x80 ? 0 : 1);
        line += ends ? 1 : 0;
    }
    return {{"line", line}, {"character", units}};
}

/// What a reader is told, blank lines aside.
std::string meaningOf(const std::string& text) {
    std::string meaning;
    kiv::KDXReader reader(text);
    while (reader.next()) {
        const bool hasHalves = reader.kind() == kiv::MiniKDXParser::lineObject ||
                               reader.kind() == kiv::MiniKDXParser::lineParameter;
        if (reader.kind() == kiv::MiniKDXParser::lineBlank && reader.comment().empty()) continue;
        meaning.append(std::to_string(reader.kind())).append(reader.first());
        meaning.append(1, '|').append(hasHalves ? reader.second() : reader.text());
        meaning.append(1, '|').append(reader.comment()).append(1, '\n');
    }
    return meaning;
}

class Client {
public:
    Client(std::string loaded, std::uint64_t seed)
        : text(std::move(loaded)),
          random(seed),
          server([this](std::string_view message) { sent.emplace_back(message); }, 100),
          confused([](std::string_view) {}, 100) {}

    void run(int steps) {
        tell({{"id", 1}, {"method", "initialize"}, {"params", Json::object()}});
        tell({{"method", "textDocument/didOpen"},
              {"params", {{"textDocument", {{"uri", "a"}, {"version", 0}, {"text", text}}}}}});
        for (int i = 0; i < steps; ++i) {
            change();
            fuzz::require(server.documents().at("a").text().text() == text,
                          "the server's text is the client's text");
            ask(oneOf(kMethods));
        }
        server.reportProblems();
    }

private:
    std::size_t below(std::size_t limit) { return static_cast<std::size_t>(random() % limit); }
    template <typename List>
    std::string oneOf(const List& list) {
        return list[below(list.size())];
    }

    /// An offset where a position can be.
    std::size_t anyOffset() {
        std::size_t offset = below(text.size() + 1);
        while (offset < text.size() &&
               ((static_cast<unsigned char>(text[offset]) & 0xC0U) == 0x80 ||
                (offset > 0 && text.compare(offset - 1, 2, "\r\n") == 0)))
            ++offset;
        return offset;
    }

    void change() {
        const auto [begin, end] = std::minmax({anyOffset(), anyOffset()});
        const std::string piece = oneOf(kPieces);
        const Json range = {{"start", positionIn(text, begin)}, {"end", positionIn(text, end)}};
        tell({{"method", "textDocument/didChange"},
              {"params",
               {{"textDocument", {{"uri", "a"}, {"version", 1}}},
                {"contentChanges", {{{"range", range}, {"text", piece}}}}}}});
        text.replace(begin, end - begin, piece);
    }

    void ask(const std::string& method) {
        const Json here = positionIn(text, anyOffset());
        sent.clear();
        tell({{"id", 2},
              {"method", "textDocument/" + method},
              {"params",
               {{"textDocument", {{"uri", "a"}}},
                {"position", here},
                {"positions", {here, here}},
                {"range", {{"start", here}, {"end", positionIn(text, anyOffset())}}},
                {"newName", oneOf(kPieces)},
                {"context", {{"includeDeclaration", true}}}}}});
        fuzz::require(sent.size() == 1, "a request gets one answer");
        const Json answer = Json::parse(sent.front());
        if (method == "formatting" || method == "rangeFormatting") requireSameMeaning(answer);
    }

    void requireSameMeaning(const Json& answer) {
        if (!answer.contains("result")) return;
        const auto& document = server.documents().at("a");
        std::vector<kiv::KDXTextEdit> edits;
        for (const Json& edit : answer["result"]) {
            const std::size_t begin = document.offsetOf(edit["range"]["start"]);
            edits.push_back({begin, document.offsetOf(edit["range"]["end"]) - begin,
                             edit["newText"].get<std::string>()});
        }
        fuzz::require(meaningOf(kiv::applyEdits(text, edits)) == meaningOf(text),
                      "layout changes no meaning");
    }

    /// Hands over a message in pieces.
    void tell(const Json& message) {
        std::string bytes = message.dump();
        bytes.insert(0, kdx::lsp::headerOf(bytes));
        const std::size_t cut = below(bytes.size());
        frames.append(std::string_view(bytes).substr(0, cut));
        fuzz::require(!frames.next(), "a part of a message is none");
        frames.append(std::string_view(bytes).substr(cut));
        const std::string whole = frames.next().value_or("");
        server.handle(Json::parse(whole));
        std::string wrong = whole;
        wrong[below(wrong.size())] = "{}[]\",:0-aT\\"[below(12)];
        confused.handle(Json::parse(wrong, nullptr, false));
    }

    std::string text;
    std::mt19937_64 random;
    std::vector<std::string> sent;
    kdx::lsp::FrameReader frames;
    kdx::lsp::Server server;
    kdx::lsp::Server confused;
};

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string text(reinterpret_cast<const char*>(data), size);
    Client(text.substr(0, kiv::findNoUtf8(text)), std::hash<std::string>()(text)).run(8);
    return 0;
}
