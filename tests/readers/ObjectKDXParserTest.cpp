#include <kiv/Error.h>
#include <kiv/ObjectKDXParser.h>

#include <limits>
#include <string>
#include <vector>

#include "support/Failure.h"
#include "support/Text.h"
#include "support/ValueSemantics.h"

using kiv::ObjectKDXParser;

namespace {

/// All that a parser has found: "line|line[key]line|line[key]line".
std::string found(ObjectKDXParser& parser) {
    std::string text = joined(parser.getResults());
    for (const auto& [key, result] : parser.getTypeResults())
        text += "[" + key + "]" + joined(result);
    return text;
}

std::string byName(ObjectKDXParser& parser, const std::string& name, int depthLimit) {
    parser.parseForObject(name, depthLimit);
    return found(parser);
}

std::string byType(ObjectKDXParser& parser, const std::string& type, int depthLimit,
                   const std::string& group) {
    parser.parseForObjectsByType(type, depthLimit, group);
    return found(parser);
}

const std::vector<std::string> kSamples = linesOf(readData("search.kdx"));
const std::string kBroken = "gain -> 3";
const std::string kBrokenMessage =
    "MiniKDXParser::parse (4): Unknown KDX syntax found:\ngain -> 3.";

struct NameRow {
    const char *text, *name;
    int depthLimit;
    const char* results;
};
const std::vector<NameRow> kNameRows = {
    // without a name it goes by its type, with one never
    {"A:|END|A: B|END|B: A|x=1|END", "A", -1, "A:|END|B:A|  x = 1|END"},
    {":|x=1|END", "", -1, ":|  x = 1|END"},
    // what is nested in a match is no match of its own
    {"A: n|B: n|x=1|END|y=2|END", "n", -1, "A:n|B:n|  x = 1|END|  y = 2|END"},
    {"A: n|B: n|x=1|END|y=2|END", "n", 0, "A:n|  y = 2|END"},
    // parameters on every level, before and after nested objects
    {"A: n|B:|C:|D:|v=4|END|v=3|END|v=2|END|v=1|E:|v=5|END|END", "n", 1,
     "A:n|B:|  v = 2|END|  v = 1|E:|  v = 5|END|END"},
    // put together anew, without actions, comments and verbatim lines
    {"  A  X :  my   n # c|  a  b=1  2 # c|> go|! v|# c|v=a\\|  b|END # c", "my n", -1,
     "A X:my n|  a b = 1  2|  v = ab|END"},
    // parameters and ENDs outside; a match that is never closed
    {"v=1|END|END|A: n|END|v=2", "n", -1, "A:n|END"},
    {"A: n|END|A: n|B:|v=1", "n", -1, "A:n|END|A:n|B:|  v = 1"},
    {"&replace A: n|END", "n", -1, "&replace A:n|END"},
};

struct KeyRow {
    const char *text, *group, *found;
};
const std::vector<KeyRow> kKeyRows = {
    {"G: 1|G: 2|T: t|END|END|END", "G", "[2]T:t|END"},
    {"G: 1|G: 2|END|T: t|END|END", "G", "[1]T:t|END"},  // 2 is closed
    {"G: 1|END|T: t|END", "G", "[T:t]T:t|END"},
    {"G: 1|END|X: 2|T: t|END|END", "G", "[T:t]T:t|END"},
    {"G: 1|G:|T: t|END|END|END", "G", "[T:t]T:t|END"},   // the innermost has no name
    {"T: t|G: 1|END|END", "G", "[T:t]T:t|G:1|END|END"},  // inside is not around
    {"G: 1|X:|T: t|T: u|END|END|END|END", "G", "[1]T:t|T:u|END|END"},
    {"G: 1|T: t|END|END|G: 2|T: t|END|T:|END|END", "G", "[1]T:t|END[2]T:|END"},
    {"T: 1|T: 2|END|END", "T", "[1]T:1|T:2|END|END"},
    {"T:|END", "T", "[T:]T:|END"},
    {"G: 1|T: t|v=1", "G", "T:t|  v = 1"},  // never closed: in the results
    {"T: t|END|T: t|v=1", "", "T:t|  v = 1[T:t]T:t|END"},
};

}  // namespace

TEST(ObjectKDXParser, findsByName) {
    const std::string all = joined(linesOf(readData("search_s1.txt")));
    const std::string own = "Sample:s1|  Rate = 10|END";
    ObjectKDXParser parser(kSamples);
    EXPECT_EQ(found(parser), "");
    for (const int limit : {-1, 2}) EXPECT_EQ(byName(parser, "s1", limit), all);
    EXPECT_EQ(byName(parser, "s1", 1),
              "Sample:s1|  Rate = 10|Channel:A|  Gain = 2|END|Channel:B|  Gain = 4|END|END");
    for (const int limit : {0, -2, std::numeric_limits<int>::min()})
        EXPECT_EQ(byName(parser, "s1", limit), own);
    EXPECT_EQ(byName(parser, "A", 0), "Channel:A|  Gain = 2|END|Channel:A|  Gain = 7|END");
    for (const char* name : {"Channel", "a", ""}) EXPECT_EQ(byName(parser, name, -1), "") << name;
}

TEST(ObjectKDXParser, findsByTypeUnderKeys) {
    const std::string a = "Channel:A|  Gain = 7|END";
    const std::string b = "Channel:B|  Gain = 4|END";
    ObjectKDXParser parser(kSamples);
    EXPECT_EQ(byType(parser, "Channel", -1, ""), "[Channel:A]" + a + "[Channel:B]" + b);
    EXPECT_EQ(byType(parser, "Channel", 0, "Sample"), "[s1]" + b + "[s2]" + a);
    EXPECT_EQ(byType(parser, "Channel", 0, "Channel"), "[A]" + a + "[B]" + b);
    EXPECT_EQ(byType(parser, "Filter", -1, "Nowhere"), "[Filter:F]Filter:F|  Cut = 5|END");
    EXPECT_EQ(byType(parser, "channel", -1, ""), "");
}

TEST(ObjectKDXParser, matchesByNameInOddTexts) {
    for (const auto& [text, name, depthLimit, results] : kNameRows) {
        ObjectKDXParser parser(lines(text));
        EXPECT_EQ(byName(parser, name, depthLimit), results) << text;
    }
}

TEST(ObjectKDXParser, keysByTheInnermostObjectOfTheGroupType) {
    for (const auto& [text, group, expected] : kKeyRows) {
        ObjectKDXParser parser(lines(text));
        EXPECT_EQ(byType(parser, "T", -1, group), expected) << text;
    }
}

TEST(ObjectKDXParser, searchesFollowOneAnother) {
    ObjectKDXParser parser(kSamples);
    const std::string filters = byType(parser, "Filter", -1, "Sample");
    EXPECT_EQ(byName(parser, "B", -1), "Channel:B|  Gain = 4|END" + filters);
    parser.getResults().clear();
    EXPECT_EQ(found(parser), filters);
    EXPECT_EQ(byName(parser, "nobody", -1), filters);
    EXPECT_EQ(byType(parser, "Nothing", -1, ""), "");

    // Broken off in a match, in a group: what was found stays, and the next search starts afresh.
    const auto search = [&] { parser.parseForObjectsByType("T", 0, "G"); };
    parser.setCommands({"G: 1", "T: a", "END", "T: b", "v = 1", "X:", kBroken});
    EXPECT_EQ(failureOf<kiv::data::invalid>(search), kBrokenMessage);
    EXPECT_EQ(found(parser), "T:b|  v = 1[1]T:a|END");
    ObjectKDXParser copy = parser;
    parser.setCommands({"v = 2", "T: c", "w = 3", "END", kBroken});
    EXPECT_EQ(failureOf<kiv::data::invalid>(search), kBrokenMessage);
    EXPECT_EQ(found(parser), "[T:c]T:c|  w = 3|END");
    EXPECT_EQ(failureOf<kiv::data::invalid>([&] { parser.parseForObject("c", -1); }),
              kBrokenMessage);
    EXPECT_EQ(found(parser), "T:c|  w = 3|END[T:c]T:c|  w = 3|END");
    EXPECT_EQ(found(copy), "T:b|  v = 1[1]T:a|END");
}

TEST(ObjectKDXParser, isAValueOfWhichAMoveTakesWhatWasFoundAndNotTheLines) {
    ObjectKDXParser source(kSamples);
    source.parseForObjectsByType("Filter", -1, "");
    source.parseForObject("F", -1);
    const auto textOf = [](ObjectKDXParser parser) {
        return found(parser) + '/' + std::to_string(parser.getCommands() == kSamples);
    };
    expectValueSemantics(source, ObjectKDXParser({"A:"}), textOf, "/1");
    ObjectKDXParser copy = source;
    copy.getResults().clear();
    copy.getTypeResults().clear();
    EXPECT_EQ(found(source), "Filter:F|  Cut = 5|END[Filter:F]Filter:F|  Cut = 5|END");
}
