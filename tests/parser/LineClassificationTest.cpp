#include <gtest/gtest.h>
#include <kiv/MiniKDXParser.h>

#include <locale>
#include <string>
#include <string_view>
#include <vector>

#include "external/Blank.h"
#include "parser/LineTrimming.h"
#include "parser/NameCharacter.h"

using Parser = kiv::MiniKDXParser;

namespace {

struct Row {
    const char* line;
    int type;
    const char* first = "";
    const char* second = "";
};
const std::vector<Row> kUnsplit = {
    {"", Parser::lineBlank},
    {" \t\v\f\r\n ", Parser::lineBlank},
    {"   # just a comment", Parser::lineBlank},
    {"#!a", Parser::lineBlank},
    {"!  free text # with hash", Parser::lineVerbatim},
    {" \t! a: b", Parser::lineVerbatim},
    {"$ # why", Parser::lineVerbatim},
    {"   > run   # why", Parser::lineAction},
    {">", Parser::lineAction},
    {"> a: b = c", Parser::lineAction},
    {"END", Parser::lineEnd},
    {"  END  # closes", Parser::lineEnd},
    {"END#", Parser::lineEnd},
    {"\tEND\r", Parser::lineEnd},
    {"end", Parser::lineUnrecognised, "end"},
    {"ENDX", Parser::lineUnrecognised, "ENDX"},
    {"END  x", Parser::lineUnrecognised, "END  x"},
    {"  my   words  # and more", Parser::lineUnrecognised, "my   words"},
    {"END\\", Parser::lineUnrecognised, "END"},
    {"name\t= 5", Parser::lineUnrecognised, "name"},
    {"a b  -c", Parser::lineUnrecognised, "a b  "},
    {"/A: x", Parser::lineUnrecognised},
    {"\xC3\xA4 = 1", Parser::lineUnrecognised},
    {"a\\# = 1", Parser::lineUnrecognised, "a"},
};
const std::vector<Row> kSplit = {
    {"END:", Parser::lineObject, "END"},
    {"Sample : s1", Parser::lineObject, "Sample", "s1"},
    {"Sample:", Parser::lineObject, "Sample"},
    {"Sample:  # none", Parser::lineObject, "Sample"},
    {":", Parser::lineObject},
    {"  : s1", Parser::lineObject, "", "s1"},
    {"My   Type :  my   name", Parser::lineObject, "My Type", "my name"},
    {"T:\ta\v\fb\t", Parser::lineObject, "T", "a b"},
    {"&replace   Sample: s1", Parser::lineObject, "&replace Sample", "s1"},
    {"Type: a:b/c-\xC3\xA4", Parser::lineObject, "Type", "a:b/c-\xC3\xA4"},
    {"Type: !a", Parser::lineObject, "Type", "!a"},
    {"=", Parser::lineParameter},
    {"END = 1", Parser::lineParameter, "END", "1"},
    {"file.name_1 & more = x", Parser::lineParameter, "file.name_1 & more", "x"},
    {"my   note = \ta\t b \r", Parser::lineParameter, "my note", "a\t b"},
    {"x == b", Parser::lineParameter, "x", "= b"},
    {"x = a\\#b # c", Parser::lineParameter, "x", "a\\#b # c"},
    {"x = a # b \\# c", Parser::lineParameter, "x", "a"},
    {"x = a\\ # b", Parser::lineParameter, "x", "a\\"},
    {"x = a\\\\#b", Parser::lineParameter, "x", "a\\\\#b"},
};

void expectClassified(const Row& row) {
    std::string first = "left";
    std::string second = "over";
    EXPECT_EQ(Parser::determineLineType(row.line, first, second), row.type) << row.line;
    EXPECT_EQ(first, row.first) << row.line;
    EXPECT_EQ(second, row.second) << row.line;
    EXPECT_EQ(Parser::determineLineType(row.line), row.type) << row.line;

    std::string inPlace = row.line;
    Parser::determineLineType(inPlace, inPlace, second);
    EXPECT_EQ(inPlace, row.first) << row.line;
    inPlace = row.line;
    Parser::determineLineType(inPlace, first, inPlace);
    EXPECT_EQ(inPlace, row.second) << row.line;
}

}  // namespace

TEST(LineClassification, tellsTheKindAndTheHalves) {
    for (const Row& row : kUnsplit) expectClassified(row);
    for (const Row& row : kSplit) expectClassified(row);
}

TEST(LineClassification, everyByteIsInTheCharacterClassesOfTheClassicLocale) {
    const std::locale& classic = std::locale::classic();
    for (int byte = 0; byte < 256; ++byte) {
        const char c = static_cast<char>(byte);
        const bool blank = std::isspace(c, classic);
        const bool inName =
            std::isalnum(c, classic) || std::string_view(" &._").find(c) != std::string_view::npos;
        EXPECT_EQ(kiv::detail::isBlank(c), blank) << byte;
        EXPECT_EQ(kiv::detail::isNameCharacter(c), inName) << byte;
    }
}

TEST(LineTrimming, cutsBlanksAndTheComment) {
    const std::pair<std::string_view, std::string_view> rows[] = {
        {" \t ", ""},
        {"  a b \r", "a b"},
        {" \t! a # b  ", "! a # b  "},
        {"  $ a # b", "$ a"},
        {"> a#", "> a"},
        {"a \\# b # c ", "a \\# b # c"},
        {"a # b \\# c", "a"},
        {std::string_view("\0 #", 3), std::string_view("\0", 1)},
    };
    for (const auto& [line, trimmed] : rows)
        EXPECT_EQ(kiv::detail::trimLine(line), trimmed) << line;
}
