#include <limits>

#include "support/EveryOperation.h"
#include "support/ValueSemantics.h"

using kiv::ObjectKDXParser;

namespace {

std::string byName(ObjectKDXParser parser, const std::string& name, int depthLimit = -1) {
    parser.parseForObject(name, depthLimit);
    return foundBy(parser);
}

std::string byType(ObjectKDXParser parser, const std::string& type, int depthLimit = -1,
                   const std::string& group = "") {
    parser.parseForObjectsByType(type, depthLimit, group);
    return foundBy(parser);
}

struct Row {
    const char *text, *what, *found;
};
const std::vector<Row> kNames = {
    // without a name it goes by its type, with one never
    {"A:|END|A: B|END|B: A|x=1|END", "A", "A:|END|B:A|  x = 1|END"},
    {":|x=1|END", "", ":|  x = 1|END"},
    // what is nested in a match is no match of its own
    {"A: n|B: n|x=1|END|y=2|END", "n", "A:n|B:n|  x = 1|END|  y = 2|END"},
    // put together anew, without actions, comments and verbatim lines
    {"  A  X :  my   n # c|  a  b=1  2 # c|> go|! v|# c|v=a\\|  b|END # c", "my n",
     "A X:my n|  a b = 1  2|  v = ab|END"},
    // parameters and ENDs outside; a match that is never closed
    {"v=1|END|END|A: n|END|v=2", "n", "A:n|END"},
    {"A: n|END|A: n|B:|v=1", "n", "A:n|END|A:n|B:|  v = 1"},
};
// The type T in the group named.
const std::vector<Row> kGroups = {
    {"G: 1|G: 2|T: t|END|END|END", "G", "[2]T:t|END"},
    {"G: 1|G: 2|END|T: t|END|END", "G", "[1]T:t|END"},  // 2 is closed
    {"G: 1|END|T: t|END", "G", "[T:t]T:t|END"},
    {"G: 1|G:|T: t|END|END|END", "G", "[T:t]T:t|END"},   // the innermost has no name
    {"T: t|G: 1|END|END", "G", "[T:t]T:t|G:1|END|END"},  // inside is not around
    {"G: 1|T: t|END|END|G: 2|T: t|END|T:|END|END", "G", "[1]T:t|END[2]T:|END"},
    {"T: 1|T: 2|END|END", "T", "[1]T:1|T:2|END|END"},
    {"T:|END", "T", "[T:]T:|END"},
    {"G: 1|T: t|v=1", "G", "T:t|  v = 1"},  // never closed: in the results
    {"T: t|END|T: t|v=1", "", "T:t|  v = 1[T:t]T:t|END"},
};

const ObjectKDXParser kSamples(linesOf(readData("search.kdx")));

}  // namespace

TEST(ObjectKDXParser, findsByName) {
    const std::string all = joined(linesOf(readData("search_s1.txt")));
    for (const int limit : {-1, 2}) EXPECT_EQ(byName(kSamples, "s1", limit), all);
    for (const int limit : {0, -2, std::numeric_limits<int>::min()})
        EXPECT_EQ(byName(kSamples, "s1", limit), "Sample:s1|  Rate = 10|END");
    EXPECT_EQ(byName(kSamples, "A", 0), "Channel:A|  Gain = 2|END|Channel:A|  Gain = 7|END");
    for (const char* name : {"Channel", "a", ""}) EXPECT_EQ(byName(kSamples, name), "") << name;
    for (const auto& [text, name, expected] : kNames)
        EXPECT_EQ(byName(ObjectKDXParser(lines(text)), name), expected) << text;

    // parameters on every level, before and after nested objects
    const ObjectKDXParser levels(lines("A: n|B:|C:|D:|v=4|END|v=3|END|v=2|END|v=1|E:|v=5|END|END"));
    EXPECT_EQ(byName(levels, "n", 0), "A:n|  v = 1|END");
    EXPECT_EQ(byName(levels, "n", 1), "A:n|B:|  v = 2|END|  v = 1|E:|  v = 5|END|END");
}

TEST(ObjectKDXParser, findsByTypeUnderKeys) {
    const std::string a = "Channel:A|  Gain = 7|END";
    const std::string b = "Channel:B|  Gain = 4|END";
    EXPECT_EQ(byType(kSamples, "Channel"), "[Channel:A]" + a + "[Channel:B]" + b);
    EXPECT_EQ(byType(kSamples, "Channel", 0, "Sample"), "[s1]" + b + "[s2]" + a);
    EXPECT_EQ(byType(kSamples, "Filter", -1, "Nowhere"), "[Filter:F]Filter:F|  Cut = 5|END");
    EXPECT_EQ(byType(kSamples, "channel"), "");
    for (const auto& [text, group, expected] : kGroups)
        EXPECT_EQ(byType(ObjectKDXParser(lines(text)), "T", -1, group), expected) << text;
}

TEST(ObjectKDXParser, searchesFollowOneAnother) {
    ObjectKDXParser parser = kSamples;
    EXPECT_EQ(foundBy(parser), "");
    parser.parseForObjectsByType("Filter", -1, "Sample");
    const std::string filters = foundBy(parser);
    parser.parseForObject("B", -1);
    EXPECT_EQ(foundBy(parser), "Channel:B|  Gain = 4|END" + filters);
    EXPECT_EQ(byName(parser, "nobody"), filters);
    EXPECT_EQ(byType(parser, "Nothing"), "");

    // Broken off in a match, in a group: what was found stays, and the next search starts afresh.
    parser.setCommands(lines("G: 1|T: a|END|T: b|v = 1|X:|gain -> 3"));
    const std::string message = "Unknown KDX syntax found:\ngain -> 3.";
    EXPECT_EQ(messageOf([&] { parser.parseForObjectsByType("T", 0, "G"); }), message);
    EXPECT_EQ(foundBy(parser), "T:b|  v = 1[1]T:a|END");
    ObjectKDXParser copy = parser;
    parser.setCommands(lines("v = 2|T: c|w = 3|END"));
    EXPECT_EQ(byType(parser, "T", 0, "G"), "[T:c]T:c|  w = 3|END");
    EXPECT_EQ(byName(parser, "c"), "T:c|  w = 3|END[1]T:a|END");
    EXPECT_EQ(foundBy(copy), "T:b|  v = 1[1]T:a|END");
}

TEST(ObjectKDXParser, isAValueOfWhichAMoveTakesWhatWasFoundAndNotTheLines) {
    ObjectKDXParser source = kSamples;
    source.parseForObjectsByType("Filter", -1, "");
    source.parseForObject("F", -1);
    const auto textOf = [](ObjectKDXParser parser) {
        return foundBy(parser) + '/' + joined(parser.getCommands()).substr(0, 6);
    };
    EXPECT_EQ(textOf(source), "Filter:F|  Cut = 5|END[Filter:F]Filter:F|  Cut = 5|END/Sample");
    expectValueSemantics(source, ObjectKDXParser({"A:"}), textOf, "/Sample");
}
