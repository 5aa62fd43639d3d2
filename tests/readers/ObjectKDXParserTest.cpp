#include <gtest/gtest.h>
#include <kiv/Error.h>
#include <kiv/ObjectKDXParser.h>

#include <limits>
#include <string>
#include <utility>
#include <vector>

#include "support/Failure.h"
#include "support/Lines.h"
#include "support/Text.h"

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

}  // namespace

TEST(ObjectKDXParser, findsByName) {
    struct Row {
        const char* name;
        int depthLimit;
        std::string results;
    };
    const std::string all = joined(linesOf(readData("search_s1.txt")));
    const std::string oneLevel =
        "Sample:s1|  Rate = 10|Channel:A|  Gain = 2|END|Channel:B|  Gain = 4|END|END";
    const std::string own = "Sample:s1|  Rate = 10|END";
    ObjectKDXParser parser(kSamples);
    EXPECT_EQ(found(parser), "");
    for (const auto& [name, depthLimit, results] :
         {Row{"s1", -1, all}, Row{"s1", 2, all}, Row{"s1", 1, oneLevel}, Row{"s1", 0, own},
          Row{"s1", -2, own}, Row{"s1", std::numeric_limits<int>::min(), own},
          Row{"A", 0, "Channel:A|  Gain = 2|END|Channel:A|  Gain = 7|END"},
          Row{"F", -1, "Filter:F|  Cut = 5|END"}, Row{"Channel", -1, ""}, Row{"a", -1, ""},
          Row{"", -1, ""}, Row{"s1", -1, all}})
        EXPECT_EQ(byName(parser, name, depthLimit), results) << name << ' ' << depthLimit;
}

TEST(ObjectKDXParser, findsByTypeUnderKeys) {
    struct Row {
        const char* type;
        int depthLimit;
        const char *group, *found;
    };
    ObjectKDXParser parser(kSamples);
    for (const auto& [type, depthLimit, group, expected] : {
             Row{"Channel", -1, "",
                 "[Channel:A]Channel:A|  Gain = 7|END[Channel:B]Channel:B|  Gain = 4|END"},
             Row{"Channel", 0, "Sample",
                 "[s1]Channel:B|  Gain = 4|END[s2]Channel:A|  Gain = 7|END"},
             Row{"Channel", 0, "Channel", "[A]Channel:A|  Gain = 7|END[B]Channel:B|  Gain = 4|END"},
             Row{"Filter", -1, "Sample", "[s1]Filter:F|  Cut = 5|END"},
             Row{"Filter", -1, "Nowhere", "[Filter:F]Filter:F|  Cut = 5|END"},
             Row{"Sample", 0, "Channel",
                 "[Sample:s1]Sample:s1|  Rate = 10|END[Sample:s2]Sample:s2|END"},
             Row{"A", -1, "", ""},
             Row{"channel", -1, "", ""},
         })
        EXPECT_EQ(byType(parser, type, depthLimit, group), expected) << type << ' ' << group;
}

TEST(ObjectKDXParser, matchesByNameInOddTexts) {
    struct Row {
        const char *text, *name;
        int depthLimit;
        const char* results;
    };
    for (const auto& [text, name, depthLimit, results] : {
             // without a name it goes by its type, with one never
             Row{"A:|END|A: B|END|B: A|x=1|END", "A", -1, "A:|END|B:A|  x = 1|END"},
             Row{":|x=1|END", "", -1, ":|  x = 1|END"},
             // what is nested in a match is no match of its own
             Row{"A: n|B: n|x=1|END|y=2|END", "n", -1, "A:n|B:n|  x = 1|END|  y = 2|END"},
             Row{"A: n|B: n|x=1|END|y=2|END", "n", 0, "A:n|  y = 2|END"},
             // parameters on every level, before and after nested objects
             Row{"A: n|B:|C:|D:|v=4|END|v=3|END|v=2|END|v=1|E:|v=5|END|END", "n", 1,
                 "A:n|B:|  v = 2|END|  v = 1|E:|  v = 5|END|END"},
             Row{"A: n|B:|C:|D:|v=4|END|v=3|END|v=2|END|END", "n", 2,
                 "A:n|B:|C:|  v = 3|END|  v = 2|END|END"},
             // put together anew, without actions, comments and verbatim lines
             Row{"  A  X :  my   n # c|  a  b=1  2 # c|> go|! v|# c|v=a\\|  b|END # c", "my n", -1,
                 "A X:my n|  a b = 1  2|  v = ab|END"},
             // parameters and ENDs outside; a match that is never closed
             Row{"v=1|END|END|A: n|END|v=2", "n", -1, "A:n|END"},
             Row{"A: n|END|A: n|B:|v=1", "n", -1, "A:n|END|A:n|B:|  v = 1"},
             Row{"&replace A: n|END", "n", -1, "&replace A:n|END"},
         }) {
        ObjectKDXParser parser(lines(text));
        EXPECT_EQ(byName(parser, name, depthLimit), results) << text;
    }
}

TEST(ObjectKDXParser, keysByTheInnermostObjectOfTheGroupType) {
    struct Row {
        const char *text, *group, *found;
    };
    for (const auto& [text, group, expected] : {
             Row{"G: 1|G: 2|T: t|END|END|END", "G", "[2]T:t|END"},
             Row{"G: 1|G: 2|END|T: t|END|END", "G", "[1]T:t|END"},  // 2 is closed
             Row{"G: 1|END|T: t|END", "G", "[T:t]T:t|END"},
             Row{"G: 1|END|X: 2|T: t|END|END", "G", "[T:t]T:t|END"},
             Row{"G: 1|G:|T: t|END|END|END", "G", "[T:t]T:t|END"},   // the innermost has no name
             Row{"T: t|G: 1|END|END", "G", "[T:t]T:t|G:1|END|END"},  // inside is not around
             Row{"G: 1|X:|T: t|T: u|END|END|END|END", "G", "[1]T:t|T:u|END|END"},
             Row{"G: 1|T: t|END|END|G: 2|T: t|END|T:|END|END", "G", "[1]T:t|END[2]T:|END"},
             Row{"T: 1|T: 2|END|END", "T", "[1]T:1|T:2|END|END"},
             Row{"T:|END", "T", "[T:]T:|END"},
             Row{"G: 1|T: t|v=1", "G", "T:t|  v = 1"},  // never closed: in the results
             Row{"T: t|END|T: t|v=1", "", "T:t|  v = 1[T:t]T:t|END"},
         }) {
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

TEST(ObjectKDXParser, copiesAreIndependentAndMovesTakeWhatWasFound) {
    ObjectKDXParser source(kSamples);
    source.parseForObjectsByType("Filter", -1, "");
    const std::string all = byName(source, "F", -1);
    ObjectKDXParser copy = source;
    EXPECT_EQ(found(copy), all);
    copy.getResults().clear();
    copy.getTypeResults().clear();
    EXPECT_EQ(found(source), all);
    copy = source;
    EXPECT_EQ(found(copy), all);

    // NOLINTBEGIN(bugprone-use-after-move): what a move leaves behind is promised.
    ObjectKDXParser moved = std::move(source);
    EXPECT_EQ(found(moved), all);
    EXPECT_EQ(found(source), "");
    EXPECT_EQ(source.getCommands(), kSamples);
    EXPECT_EQ(byName(source, "F", -1), "Filter:F|  Cut = 5|END");
    copy = std::move(moved);
    EXPECT_EQ(found(copy), all);
    EXPECT_EQ(found(moved), "");
    EXPECT_EQ(copy.getCommands(), kSamples);
    // NOLINTEND(bugprone-use-after-move)
}
