// One line: what kind it is, and what its halves are.

#include <kiv/KDXFormatting.h>
#include <kiv/StringUtilities.h>

#include "Support.h"

namespace {

using kiv::StringUtilities::removeWhitespace;
using kiv::StringUtilities::simplifyWhitespace;
using Parser = kiv::MiniKDXParser;

struct Classified {
    Parser::lineType kind;
    std::string first;
    std::string second;
    bool operator==(const Classified& other) const {
        return kind == other.kind && first == other.first && second == other.second;
    }
};

Classified classify(const std::string& line) {
    Classified result{Parser::lineUnrecognised, "left over", "left over"};
    result.kind = Parser::determineLineType(line, result.first, result.second);
    return result;
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
    fuzz::require(result == classifyPlainly(line), "the rules hold, one after the other");
    fuzz::require(result.kind == Parser::determineLineType(line), "both overloads agree");

    std::string first = line;
    std::string second = line;
    Parser::determineLineType(first, first, second);
    fuzz::require(first == result.first && second == result.second,
                  "the line may be the first half");
    second = line;
    Parser::determineLineType(second, first, second);
    fuzz::require(first == result.first && second == result.second,
                  "the line may be the second half");

    if (result.kind == Parser::lineObject || result.kind == Parser::lineParameter) {
        const char* separator = result.kind == Parser::lineObject ? ": " : " = ";
        fuzz::require(classify(result.first + separator + result.second) == result,
                      "the halves make the same line");
    }

    const std::string text = kiv::KDXFormatting::removeComment(line);
    fuzz::require(text == kiv::KDXFormatting::removeComment(text), "no second comment is found");
    return 0;
}
