#include <kiv/KDXReader.h>

#include "support/Failure.h"
#include "support/Text.h"

using kiv::KDXReader;
using Part = KDXReader::Part;

namespace {

/// "3 d0 1:1 Sample|s1|# c": kind, depth, place, halves and comment of a statement.
std::string textOf(const KDXReader& reader) {
    return std::to_string(reader.kind()) + " d" + std::to_string(reader.depth()) + ' ' +
           placeText(reader.place()) + ' ' + std::string(reader.first()) + '|' +
           std::string(reader.second()) + '|' + std::string(reader.comment());
}

std::string statementsOf(const std::string& text) {
    std::string statements;
    for (KDXReader reader(text); reader.next();) statements += textOf(reader) + '\n';
    return statements;
}

/// The reader on the first statement of the text, with which the text ends.
KDXReader readerOf(std::string_view text) {
    KDXReader reader(text);
    reader.next();
    return reader;
}

const std::vector<Case> kRows = {
    {"", ""},
    {"\n", "2 d0 1:1 ||\n"},
    {"A: s  1 # c \r\n  x=1\nEND\nEND",
     "3 d0 1:1 A|s 1|# c\n4 d1 2:3 x|1|\n5 d0 3:1 ||\n5 d0 4:1 ||\n"},
    {"!a # b\n$a # b\n> go # b\n# b",
     "1 d0 1:1 ||\n1 d0 2:1 ||# b\n6 d0 3:1 ||# b\n2 d0 4:1 ||# b\n"},
    {"x = a\\\n  b # c\\\n  d\ny", "4 d0 1:1 x|ab|# cd\n0 d0 4:1 y||\n"},
    {"\xEF\xBB\xBF x=a\\#b # c", "4 d0 1:2 x|a\\#b # c|\n"},
    {"E\\\nND", "5 d0 1:1 ||\n"},
};

struct PlaceRow {
    const char* text;
    Part part;
    std::size_t byte;
    const char* place;
};
const std::vector<PlaceRow> kPlaces = {
    {"x = a\\\n  b # c", Part::second, 1, "2:3"}, {"x = a\\\n  b # c", Part::second, 2, "2:4"},
    {"x = a\\\n\n", Part::second, 1, "1:6"},      {"x =\\\n # c", Part::second, 0, "1:4"},
    {"x =\\\n # c", Part::comment, 0, "2:2"},     {"x = 1", Part::comment, 0, "1:6"},
    {"A  b : c \t d", Part::first, 2, "1:4"},     {"A  b : c \t d", Part::second, 2, "1:12"},
    {"  my  words", Part::first, 4, "1:7"},       {"  > a b # c", Part::text, 2, "1:5"},
    {"a = 1\\\n\\\n 2", Part::line, 5, "3:2"},
};

struct EndRow {
    const char* text;
    const char* lineEnd;
    bool continued;
};
const std::vector<EndRow> kEnds = {
    {"x", "", false},    {"x\n", "\n", false},   {"x\r\n", "\r\n", false},
    {"\n", "\n", false}, {"x\\\n", "\n", false}, {"x\\\ny\r\n", "\r\n", true},
    {"x\r", "", false},
};

}  // namespace

TEST(KDXReader, reportsEveryStatementWithItsPlace) {
    for (const auto& [text, statements] : kRows) EXPECT_EQ(statementsOf(text), statements) << text;
}

TEST(KDXReader, knowsWhereEveryByteComesFrom) {
    for (const PlaceRow& row : kPlaces)
        EXPECT_EQ(placeText(readerOf(row.text).placeOf(row.part, row.byte)), row.place)
            << row.text << '\n'
            << row.byte;
    const KDXReader reader = readerOf("x = 1");
    EXPECT_EQ(failureOf<kiv::internal::error>([&] { reader.placeOf(Part::second, 2); }),
              "KDXReader::placeOf (4): There is no byte at this position.");
    EXPECT_EQ(failureOf<kiv::internal::error>([&] { reader.placeInSource(6); }),
              "KDXReader::placeInSource (4): There is no byte at this position.");
}

TEST(KDXReader, tellsHowAStatementEnds) {
    for (const EndRow& row : kEnds) {
        EXPECT_EQ(readerOf(row.text).lineEnd(), row.lineEnd) << row.text;
        EXPECT_EQ(readerOf(row.text).isContinued(), row.continued) << row.text;
    }
}

TEST(KDXReader, stopsAtTheEndAndAtTheDepthLimit) {
    KDXReader ended("x=1\ny");
    while (ended.next()) {
    }
    EXPECT_FALSE(ended.next() || ended.isTooDeep());
    EXPECT_EQ(textOf(ended), "2 d0 2:2 ||");

    KDXReader limited("A:\nEND\nB:\nC: c\n", 1);
    int statements = 0;
    while (limited.next()) ++statements;
    EXPECT_EQ(statements, 3);
    EXPECT_TRUE(limited.isTooDeep());
    EXPECT_FALSE(limited.next());
    EXPECT_EQ(textOf(limited), "3 d1 4:1 C|c|");
}

TEST(KDXReader, canBeMovedBetweenStatements) {
    const std::string text = "a   b = 1\\\n2\nlast = 3";
    KDXReader first(text);
    first.next();
    KDXReader reader(std::move(first));
    EXPECT_EQ(textOf(reader), "4 d0 1:1 a b|12|");
    first = std::move(reader);
    EXPECT_TRUE(first.next());
    EXPECT_EQ(textOf(first), "4 d0 3:1 last|3|");
}
