// One line: what kind it is, and what its halves are.

#include <kiv/KDXFormatting.h>
#include <kiv/StringUtilities.h>

#include "Support.h"

using Parser = kiv::MiniKDXParser;

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string line = fuzz::Input(data, size).all();
    std::string first = "left over";
    std::string second = "left over";
    const auto kind = Parser::determineLineType(line, first, second);
    fuzz::require(kind == Parser::determineLineType(line), "both overloads agree");
    fuzz::require(kind == Parser::determineLineType(" \t" + line + " \r"),
                  "outer blanks do not matter");

    std::string alias = line;
    fuzz::require(Parser::determineLineType(alias, alias, second) == kind && alias == first,
                  "the line may be an output");

    const bool object = kind == Parser::lineObject;
    if (object || kind == Parser::lineParameter) {
        std::string name;
        std::string rest;
        const std::string again = first + (object ? ":" : "=") + second;
        fuzz::require(
            Parser::determineLineType(again, name, rest) == kind && name == first && rest == second,
            "the halves make the same line");
        fuzz::require(first == kiv::StringUtilities::simplifyWhitespace(first),
                      "the first half has simple whitespace");
        fuzz::require(second == kiv::StringUtilities::removeWhitespace(second),
                      "the second half has no outer blanks");
    } else {
        fuzz::require(second.empty(), "other lines have no second half");
        fuzz::require(first.empty() || kind == Parser::lineUnrecognised,
                      "only unrecognised lines have a first half alone");
    }

    const std::string text = kiv::KDXFormatting::removeComment(line);
    fuzz::require(text == kiv::KDXFormatting::removeComment(text), "no second comment is found");
    return 0;
}
