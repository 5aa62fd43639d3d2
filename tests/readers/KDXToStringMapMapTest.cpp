#include <kiv/KDXToStringMapMap.h>

#include <set>
#include <type_traits>

#include "support/Failure.h"
#include "support/Text.h"

using kiv::KDXToStringMapMap;
using kiv::StringMapMap;

namespace {

struct Row {
    std::string text, outcome;  // the map, and the message of what is thrown
    std::set<std::string> types = {};
    bool exclude = false;
    StringMapMap before = {};
};
const std::string kNested =
    "A:\n  p = 1\n  B:\n    q = 2\n  END\n  r = 3\nEND\nB:\n  A:\n    s = 4\n  END\nEND\nC:";
const std::string kSamples =
    "/Sample:s1 {Rate=10, Unit=Hz}\n/Sample:s1/Channel:A {Gain=2}\n/Sample:s1/Channel:B {}\n";
const std::vector<Row> kRows = {
    {"", ""},
    {"\n # a\n! b\n> c\n$ d", ""},
    {"A: A\nEND\nA:\nEND\nA: a\nEND", "/A {}\n/A:a {}\n"},
    {":\n  : n\n  END\n  :\n  END\nEND", "/ {}\n// {}\n//:n {}\n"},
    {"A: b/c:d\n  x y  =  1  2\nEND", "/A:b/c:d {x y=1  2}\n"},
    {"A:\n  p = 1\n  B:\n    p = 2\n  END\n  q = 3\n  > go\nEND", "/A {p=1, q=3}\n/A/B {p=2}\n"},
    {"B:\n  p = 2\n  p = 3\nEND\nA:\nEND\nB: B\n  p = 4\n  =\nEND", "/A {}\n/B {=, p=2}\n"},
    {"A:\r\n  p = 1 \r\n  B: b\r\n  END\r\nEND\r\n", "/A {p=1}\n/A/B:b {}\n"},
    // Never closed.
    {"A:\n  p = 1\n  B:\n    q = 2", "/A {p=1}\n/A/B {q=2}\n"},
    // What stands before a failure stays.
    {"A:\n  p = 1\nEND\nEND\nB:", "/A {p=1}\nToo many ENDs in KDX"},
    {"A:\nEND\n = \nB:", "/A {}\nAttempt to add parameter before object opened"},
    {"A:\n  p = 1\n  q -> 2\nEND", "/A {p=1}\nUnknown KDX syntax found:\n  q -> 2."},
    // What the map holds stays, too.
    {"B:\n  p = 1\n  q = 2\nEND\nA:\nEND\nD:\n  C:\n  END\n  d = 5\nEND",
     "/A {}\n/B {p=0, q=2}\n/C {}\n/D {d=5}\n/D/C {}\n/E {}\n",
     {},
     false,
     {{"/B", {{"p", "0"}}}, {"/C", {}}, {"/E", {}}}},
    // The types asked for.
    {readData("filters.kdx"), "/Config {Mode=fast}\n" + kSamples},
    {readData("filters.kdx"), "/Config {Mode=fast}\n", {"Config"}},
    {readData("filters.kdx"), kSamples, {"Config"}, true},
    {kNested, "/A {p=1, r=3}\n/A/B {q=2}\n/B {}\n/B/A {s=4}\n/C {}\n", {}, true},
    {kNested, "/B {}\n/B/A {s=4}\n/C {}\n", {"A"}, true},
    {kNested, "/A {p=1, r=3}\n/A/B {q=2}\n/C {}\n", {"A", "C"}},
    {kNested, "", {"a", "A:", "/A", ""}},
    {":\n  p = 1\nEND", "/ {p=1}\n", {""}},
    {"A  B: c", "/A B:c {}\n", {"A B"}},
    {"A:\n  B:\n  END\nEND\nEND", "Too many ENDs in KDX", {"B"}},
    {"A:\nEND\np = 1", "Attempt to add parameter before object opened", {"B"}},
    {"A:\n  x -> y", "Unknown KDX syntax found:\n  x -> y.", {"A"}, true},
};

}  // namespace

TEST(KDXToStringMapMap, collectsObjectsAndParametersOfTheTypesAskedFor) {
    for (const Row& row : kRows) {
        StringMapMap map = row.before;
        const std::string message =
            messageOf([&] { KDXToStringMapMap::convert(row.text, map, row.types, row.exclude); });
        EXPECT_EQ(dump(map) + message, row.outcome) << row.text;
    }
}

TEST(KDXToStringMapMap, parsesAgainWithTheObjectsThatItLeftOpen) {
    StringMapMap map;
    KDXToStringMapMap converter(std::string("A:\n  p = 1\n"), map);
    KDXToStringMapMap copy(converter);
    converter.parse();
    EXPECT_EQ(dump(map), "/A {p=1}\n/A/A {p=1}\n");
    copy.setCommands(lines("q = 2|B:|END|r = 3|END|END"));
    EXPECT_EQ(messageOf([&] { copy.parse(); }), "Too many ENDs in KDX");
    EXPECT_EQ(dump(map), "/A {p=1, q=2, r=3}\n/A/A {p=1}\n/A/B {}\n");

    const std::set<std::string> types{"B"};
    KDXToStringMapMap leavingOut(lines("A:|C:"), map, types, false);
    map.clear();
    leavingOut.setCommands(lines("p = 1|END|B:|END|END|B:|q = 2"));
    leavingOut.parse();
    EXPECT_EQ(dump(map), "/B {q=2}\n");
}

TEST(KDXToStringMapMap, letsASubclassTakeObjectsOutOfTheMapAsTheyEnd) {
    struct Stream : KDXToStringMapMap {
        explicit Stream(StringMapMap& target)
            : KDXToStringMapMap(std::string("E:\nEND"), target), map(target) {}
        void endObject() override {
            const std::string ended = "/A/B:" + objectStack.back().second;
            KDXToStringMapMap::endObject();
            if (map.count(ended) != 0) taken += dump({*map.find(ended)});
            map.erase(ended);
        }
        StringMapMap& map;
        std::string taken;
    };
    StringMapMap map;
    Stream stream(map);
    map.clear();
    stream.setCommands(lines("A:|B: x|p=1|END|B: y|p=2|END|q=3|END"));
    stream.parse();
    EXPECT_EQ(stream.taken + dump(map), "/A/B:x {p=1}\n/A/B:y {p=2}\n/A {q=3}\n");
}

TEST(KDXToStringMapMap, itsExceptionStandsAloneAndIsCopied) {
    using Except = KDXToStringMapMap::Except;
    static_assert(!std::is_polymorphic_v<Except> && !std::is_base_of_v<kiv::Error, Except>);
    static_assert(!std::is_copy_assignable_v<KDXToStringMapMap>);
    const Except original("what");
    Except copy("");
    copy = Except(original);
    EXPECT_EQ(copy.message(), "what");
}
