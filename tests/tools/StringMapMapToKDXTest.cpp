#include <kiv/KDXToStringMapMap.h>
#include <kiv/StringMapMapToKDX.h>

#include <stdexcept>

#include "support/Text.h"

using kiv::StringMapMap;
using kiv::StringMapMapToKDX;
using Format = StringMapMapToKDX::Format;

namespace {

std::string textOf(const std::string& replacePath, const StringMapMap& map,
                   const Format& format = Format()) {
    std::string text;
    StringMapMapToKDX::convert(replacePath, map, text, format);
    return text;
}

const StringMapMap kSample = {
    {"/Sample:s1", {{"gain", "10"}, {"mode", "fast"}}},
    {"/Sample:s1/Channel:A", {{"offset", "0.5"}}},
    {"/Sample:s1/Channel:A/Filter", {{"order", "2"}}},
};

struct Row {
    StringMapMap map;
    const char* text;
    const char* replacePath = "";
};
const Format kPlain(1, false, false);
const std::vector<Row> kRows = {
    {{}, ""},
    {{{"/A", {}}}, "A:\nEND\n"},
    {{{"/S:s/C:A", {}}, {"/S:s/C:B", {}}}, "S:s\n C:A\n END\n C:B\n END\nEND\n"},
    {{{"/A:x/B", {}}, {"/A:x.y", {}}}, "A:x\n B:\n END\nEND\nA:x.y\nEND\n"},
    // Byte order of the keys would put some between /A and /A/B, or far ahead.
    {{{"/A", {{"p", "1"}}},
      {"/A x", {}},
      {"/A/B", {}},
      {"/A/C", {}},
      {"/A:0", {}},
      {"/A:A", {{"q", "2"}}},
      {"/B", {}}},
     "A:0\nEND\nA:\n p=1\n B:\n END\n C:\n END\nEND\nA x:\nEND\nB:\nEND\n"},
    // From one depth to another.
    {{{"/A/B/C", {{"p", "1"}}}, {"/A/D", {}}, {"/E/F", {}}},
     "A:\n B:\n  C:\n   p=1\n  END\n END\n D:\n END\nEND\nE:\n F:\n END\nEND\n"},
    {{{"/A:x/B", {}}, {"/A:y/B", {}}}, "A:x\n B:\n END\nEND\nA:y\n B:\n END\nEND\n"},
    // The same path twice: the first in byte order is written, without the other's parameters.
    {{{"/A", {{"p", "1"}}}, {"/A:A", {{"p", "2"}, {"q", "3"}}}}, "A:\n p=1\nEND\n"},
    {{{"/A:", {{"p", "1"}}}, {"/A:A", {{"q", "2"}}}, {"A", {{"r", "3"}}}}, "A:\n p=1\nEND\n"},
    {{{"/A:A/B", {}}, {"/A/C", {}}}, "A:\n B:\n END\n C:\n END\nEND\n"},
    // Other keys than a reader makes.
    {{{"A:x/B", {{"p", "1"}}}}, "A:x\n B:\n  p=1\n END\nEND\n"},
    {{{"", {{"p", "1"}}}, {"/A", {}}}, "p=1\nA:\nEND\n"},
    {{{"/", {{"p", "1"}}}, {"//:n", {}}}, ":\n p=1\n :n\n END\nEND\n"},
    // Nothing is escaped.
    {{{"/A", {{"", ""}, {"p", "1\n2"}, {" q ", " 3 "}}}}, "A:\n =\n  q = 3 \n p=1\n2\nEND\n"},
    {{{"/A:b\\\r/c", {{"p", "1\\"}}}}, "A:b\\\r\n c:\n  p=1\\\n END\nEND\n"},
    // One is marked, in front of its indentation.
    {{{"/S:s1/C:A", {}}}, "&replace S:s1\n C:A\n END\nEND\n", "/S:s1"},
    {{{"/S:s1/C:A", {}}}, "S:s1\n&replace  C:A\n END\nEND\n", "/S:s1/C:A"},
    {{{"/A/B", {}}, {"/A/C", {}}}, "A:\n B:\n END\n&replace  C:\n END\nEND\n", "/A/C"},
    {{{"/A:A/B:B", {}}}, "A:\n&replace  B:\n END\nEND\n", "/A/B"},
    {{{"/A/B", {}}, {"/B", {}}}, "A:\n B:\n END\nEND\n&replace B:\nEND\n", "/B"},
    {{{"A/B", {{"p", "1"}}}}, "A:\n&replace  B:\n  p=1\n END\nEND\n", "/A/B"},
};

}  // namespace

TEST(StringMapMapToKDX, writesTheWorkedExample) {
    EXPECT_EQ(textOf("", kSample), readData("written.kdx"));
    EXPECT_EQ(textOf("/Sample:s1/Channel:A", kSample), readData("marked.kdx"));
    EXPECT_EQ(textOf("", kSample, Format(4, false, false)), readData("compact.kdx"));
    EXPECT_EQ(textOf("", {{"/A:b", {{"p", "1"}}}}, Format(0, true, false)), "A: b\np = 1\nEND\n");
    EXPECT_EQ(textOf("", {{"/A:b", {}}}, Format(0, false, true)), "A:b\nEND # A:b\n");
    StringMapMap map;
    kiv::KDXToStringMapMap::convert(readData("written.kdx"), map);
    EXPECT_EQ(map, kSample);
}

TEST(StringMapMapToKDX, writesObjectsInPathOrderAndMarksOne) {
    for (const auto& [map, text, replacePath] : kRows)
        EXPECT_EQ(textOf(replacePath, map, kPlain), text) << replacePath;
    for (const char* path : {"/", "/Sample:s1/", "Sample:s1", "/Sample", "/sample:s1", "/Channel:A",
                             "/Sample:s1/Channel:A/Filter:Filter", "/Sample:s1/Channel"})
        EXPECT_EQ(textOf(path, kSample), textOf("", kSample)) << path;
}

TEST(StringMapMapToKDX, refusesANegativeIndentationAtTheFirstObject) {
    const Format format(-1, true, true);
    EXPECT_EQ(textOf("", {}, format), "");
    std::string text = "x";
    EXPECT_THROW(StringMapMapToKDX::convert("/A", {{"/A", {}}}, text, format), std::length_error);
    EXPECT_EQ(text, "x");
    EXPECT_THROW(StringMapMapToKDX({{"", {{"p", "1"}}}, {"/A", {}}}, text, format),
                 std::length_error);
    EXPECT_EQ(text, "xp = 1\n");
}
