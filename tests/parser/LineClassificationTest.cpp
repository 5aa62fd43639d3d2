#include <gtest/gtest.h>
#include <kiv/MiniKDXParser.h>

#include <locale>
#include <string>
#include <string_view>
#include <vector>

#include "base/Blank.h"
#include "base/NameCharacter.h"

using Parser = kiv::MiniKDXParser;

namespace {

struct Row {
    const char* line;
    Parser::lineType kind;
    const char* first = "";
    const char* second = "";
};
const std::vector<Row> kRows = {
    // The independent classification in fuzz/ holds that every other line is told apart like these.
    {"", Parser::lineBlank},
    {" \t\v\f\r\n ", Parser::lineBlank},
    {" \t!  free text # with hash", Parser::lineVerbatim},
    {"$ # why", Parser::lineVerbatim},
    {"   > run   # why", Parser::lineAction},
    {"  END  # closes", Parser::lineEnd},
    {"END#", Parser::lineEnd},
    {"end", Parser::lineUnrecognised, "end"},
    {"END  x", Parser::lineUnrecognised, "END  x"},
    {"  my   words  # and more", Parser::lineUnrecognised, "my   words"},
    {"END\\", Parser::lineUnrecognised, "END"},
    {"name\t= 5", Parser::lineUnrecognised, "name"},
    {"/A: x", Parser::lineUnrecognised},
    {"Sample : s1", Parser::lineObject, "Sample", "s1"},
    {"  : s1", Parser::lineObject, "", "s1"},
    {"My   Type :  my   name", Parser::lineObject, "My Type", "my name"},
    {"T:\ta\v\fb\t", Parser::lineObject, "T", "a b"},
    {"&replace   Sample: !s1", Parser::lineObject, "&replace Sample", "!s1"},
    {"Type: a:b/c-\xC3\xA4", Parser::lineObject, "Type", "a:b/c-\xC3\xA4"},
    {"my   note = \ta\t b \r", Parser::lineParameter, "my note", "a\t b"},
    {"x = a\\#b # c", Parser::lineParameter, "x", "a\\#b # c"},
    {"x = a\\ # b", Parser::lineParameter, "x", "a\\"},
    {"x = a\\\\#b", Parser::lineParameter, "x", "a\\\\#b"},
};

}  // namespace

TEST(LineClassification, tellsTheKindAndTheHalves) {
    for (const auto& [line, kind, expectedFirst, expectedSecond] : kRows) {
        std::string first = "left";
        std::string second = "over";
        EXPECT_EQ(Parser::determineLineType(line, first, second), kind) << line;
        EXPECT_EQ(first, expectedFirst) << line;
        EXPECT_EQ(second, expectedSecond) << line;
    }
}

TEST(LineClassification, everyByteIsInTheCharacterClassesOfTheClassicLocale) {
    const std::locale& classic = std::locale::classic();
    for (int byte = 0; byte < 256; ++byte) {
        const char c = static_cast<char>(byte);
        const bool inName =
            std::isalnum(c, classic) || std::string_view(" &._").find(c) != std::string_view::npos;
        EXPECT_EQ(kiv::detail::isBlank(c), std::isspace(c, classic)) << byte;
        EXPECT_EQ(kiv::detail::isNameCharacter(c), inName) << byte;
    }
}
