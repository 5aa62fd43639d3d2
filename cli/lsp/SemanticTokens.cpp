#include <algorithm>
#include <array>

#include "Features.h"
#include "Nodes.h"

namespace kdx::lsp {
namespace {

/// In the order of the legend.
enum class TokenType : int { type, name, parameter, value, comment, end, action, verbatim };

constexpr std::array<const char*, 8> kLegend = {"class",   "variable", "property", "string",
                                                "comment", "keyword",  "function", "macro"};

/// The parts of statements that mean something, each line of them a token.
class Tokens {
public:
    Tokens(const OpenDocument& givenDocument, const Span& givenWindow)
        : document(givenDocument), window(givenWindow), reader(document.text().text()) {}

    std::string write() {
        while (reader.next()) {
            const std::size_t begin = reader.placeInSource(0).offset;
            if (begin >= window.end) break;
            if (begin + reader.source().size() > window.begin) addStatement();
        }
        return json + "]}";
    }

private:
    void addStatement() {
        const MiniKDXParser::lineType kind = reader.kind();
        if (kind == MiniKDXParser::lineObject) addHalves(TokenType::type, TokenType::name);
        if (kind == MiniKDXParser::lineParameter) addHalves(TokenType::parameter, TokenType::value);
        if (kind == MiniKDXParser::lineEnd) add(Part::text, TokenType::end);
        if (kind == MiniKDXParser::lineAction) add(Part::text, TokenType::action);
        if (kind == MiniKDXParser::lineVerbatim) add(Part::text, TokenType::verbatim);
        add(Part::comment, TokenType::comment);
    }

    void addHalves(TokenType first, TokenType second) {
        add(Part::first, first);
        add(Part::second, second);
    }

    void add(Part part, TokenType type) {
        auto [begin, partEnd] = spanOf(reader, part);
        const std::string& text = document.text().text();
        while (begin < partEnd) {
            const std::size_t end = std::min(text.find_first_of("\r\n", begin), partEnd);
            if (end > begin) addLine({begin, end}, type);
            begin = std::min(text.find_first_not_of(" \t\r\n", end), partEnd);
        }
    }

    /// As the protocol counts: from the token before.
    void addLine(const Span& span, TokenType type) {
        const Position begin = document.text().positionOf(span.begin);
        const Position end = document.text().positionOf(span.end);
        const bool sameLine = begin.line == last.line;
        for (const std::size_t number :
             {begin.line - last.line, begin.character - (sameLine ? last.character : 0),
              end.character - begin.character, static_cast<std::size_t>(type), std::size_t{0}})
            json.append(json.back() == '[' ? "" : ",").append(std::to_string(number));
        last = begin;
    }

    const OpenDocument& document;
    Span window;
    KDXReader reader;
    std::string json = R"({"data":[)";
    Position last;
};

}  // namespace

std::string semanticTokens(const Documents& documents, const Json& params) {
    const OpenDocument& document = documentOf(documents, params);
    Span window{0, document.text().text().size()};
    if (params.contains("range")) window = document.spanOf(params["range"]);
    return Tokens(document, window).write();
}

Json semanticTokensOptions() {
    return {{"legend", {{"tokenTypes", kLegend}, {"tokenModifiers", Json::array()}}},
            {"full", true},
            {"range", true}};
}

}  // namespace kdx::lsp
