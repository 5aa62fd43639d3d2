// One line: what kind it is, and what its halves are.

#include <kiv/KDXFormatting.h>
#include <kiv/StringUtilities.h>

#include <tuple>

#include "Support.h"

namespace {

using kiv::StringUtilities::removeWhitespace;
using kiv::StringUtilities::simplifyWhitespace;
using Parser = kiv::MiniKDXParser;

using Classified = std::tuple<Parser::lineType, std::string, std::string>;

Classified classify(const std::string& line) {
    std::string first = "left";
    std::string second = "over";
    const auto kind = Parser::determineLineType(line, first, second);
    return {kind, first, second};
}

std::string trimmed(const std::string& line) {
    std::string text = fuzz::withoutLeadingBlanks(line);
    if (text.empty() || text.front() == '!') return text;
    const std::size_t hash = text.find('#');
    const bool escaped = hash != std::string::npos && hash > 0 && text[hash - 1] == '\\';
    return removeWhitespace(escaped ? text : text.substr(0, hash));
}

// The rules one after the other, without regard to speed.
Classified classifyPlainly(const std::string& line) {
    const std::string text = trimmed(line);
    if (text.empty()) return {Parser::lineBlank, "", ""};
    if (text.front() == '!' || text.front() == '$') return {Parser::lineVerbatim, "", ""};
    if (text.front() == '>') return {Parser::lineAction, "", ""};
    if (text == "END") return {Parser::lineEnd, "", ""};
    const std::size_t stop = text.find_first_not_of(
        "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789 &._");
    const std::string name = text.substr(0, stop);
    const char c = stop == std::string::npos ? '\0' : text[stop];
    if (c != ':' && c != '=') return {Parser::lineUnrecognised, name, ""};
    const std::string rest = text.substr(stop + 1);
    if (c == ':') return {Parser::lineObject, simplifyWhitespace(name), simplifyWhitespace(rest)};
    return {Parser::lineParameter, simplifyWhitespace(name), removeWhitespace(rest)};
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string line = fuzz::Input(data, size).all();
    const Classified result = classify(line);
    const auto& [kind, first, second] = result;
    fuzz::require(result == classifyPlainly(line), "the rules hold, one after the other");
    fuzz::require(kind == Parser::determineLineType(line), "both overloads agree");

    std::string half = line;
    std::string other;
    Parser::determineLineType(half, half, other);
    fuzz::require(half == first && other == second, "the line may be the first half");
    half = line;
    Parser::determineLineType(half, other, half);
    fuzz::require(other == first && half == second, "the line may be the second half");

    if (kind == Parser::lineObject || kind == Parser::lineParameter)
        fuzz::require(
            classify(first + (kind == Parser::lineObject ? ": " : " = ") + second) == result,
            "the halves make the same line");

    const std::string text = kiv::KDXFormatting::removeComment(line);
    fuzz::require(text == kiv::KDXFormatting::removeComment(text), "no second comment is found");
    return 0;
}
