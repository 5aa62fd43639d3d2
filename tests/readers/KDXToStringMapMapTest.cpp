#include <gtest/gtest.h>
#include <kiv/Error.h>
#include <kiv/KDXToStringMapMap.h>

#include <functional>
#include <set>
#include <string>
#include <type_traits>
#include <vector>

#include "support/Text.h"

using kiv::KDXToStringMapMap;
using kiv::StringMapMap;
using Types = std::set<std::string>;

namespace {

/// The map that a conversion leaves, and what it throws.
std::string outcomeOf(StringMapMap map, const std::function<void(StringMapMap&)>& conversion) {
    std::string thrown;
    try {
        conversion(map);
    } catch (const KDXToStringMapMap::Except& exception) {
        thrown = exception.message();
    } catch (const kiv::data::invalid& error) {
        thrown = error.message();
    }
    return dump(map) + thrown;
}

/// That all four ways to convert a text have this outcome.
void expectOutcome(const std::string& text, const std::string& outcome, const Types& types = {},
                   bool exclude = false, const StringMapMap& before = {}) {
    const auto lines = linesOf(text);
    const std::vector<std::function<void(StringMapMap&)>> ways = {
        [&](StringMapMap& map) { KDXToStringMapMap::convert(text, map, types, exclude); },
        [&](StringMapMap& map) { KDXToStringMapMap::convert(lines, map, types, exclude); },
        [&](StringMapMap& map) { KDXToStringMapMap(text, map, types, exclude); },
        [&](StringMapMap& map) { KDXToStringMapMap(lines, map, types, exclude); }};
    for (const auto& way : ways) EXPECT_EQ(outcomeOf(before, way), outcome) << text;
}

const std::vector<Case> kRows = {
    {"", ""},
    {"\n # a\n! b\n> c\n$ d", ""},
    {"A:\nEND", "/A {}\n"},
    {"A: A\nEND\nA:\nEND\nA: a\nEND", "/A {}\n/A:a {}\n"},
    {":\n  : n\n  END\n  :\n  END\nEND", "/ {}\n// {}\n//:n {}\n"},
    {"A: b/c:d\n  x y  =  1  2\nEND", "/A:b/c:d {x y=1  2}\n"},
    {"&replace A: b\n  p = 1\nEND", "/&replace A:b {p=1}\n"},
    {"A:\n  p = 1\n  B:\n    p = 2\n  END\n  q = 3\n  > go\nEND", "/A {p=1, q=3}\n/A/B {p=2}\n"},
    {"B:\n  p = 2\n  p = 3\nEND\nA:\nEND\nB: B\n  p = 4\n  =\nEND", "/A {}\n/B {=, p=2}\n"},
    {"A:\r\n  p = 1 \r\n  B: b\r\n  END\r\nEND\r\n", "/A {p=1}\n/A/B:b {}\n"},
    {"A:\n  p = 1\\\n    2\nEND", "/A {p=12}\n"},
    // Never closed.
    {"A:\n  p = 1\n  B:\n    q = 2", "/A {p=1}\n/A/B {q=2}\n"},
    // What stands before a failure stays.
    {"END", "Too many ENDs in KDX"},
    {"A:\n  p = 1\nEND\nEND\nB:", "/A {p=1}\nToo many ENDs in KDX"},
    {"p = 1", "Attempt to add parameter before object opened"},
    {"A:\nEND\n = \nB:", "/A {}\nAttempt to add parameter before object opened"},
    {"A:\n  p = 1\n  q -> 2\nEND", "/A {p=1}\nUnknown KDX syntax found:\n  q -> 2."},
};

struct FilterRow {
    Types types;
    bool exclude;
    const char *text, *outcome;
};
const char* const kNested =
    "A:\n  p = 1\n  B:\n    q = 2\n  END\n  r = 3\nEND\nB:\n  A:\n    s = 4\n  END\nEND\nC:";
const std::vector<FilterRow> kFilters = {
    {{}, true, kNested, "/A {p=1, r=3}\n/A/B {q=2}\n/B {}\n/B/A {s=4}\n/C {}\n"},
    {{"A"}, false, kNested, "/A {p=1, r=3}\n/A/B {q=2}\n"},
    {{"A"}, true, kNested, "/B {}\n/B/A {s=4}\n/C {}\n"},
    {{"A", "C"}, false, kNested, "/A {p=1, r=3}\n/A/B {q=2}\n/C {}\n"},
    {{"a", "A:", "/A", ""}, false, kNested, ""},
    {{""}, false, ":\n  p = 1\nEND", "/ {p=1}\n"},
    {{"A B"}, false, "A  B: c", "/A B:c {}\n"},
    {{"B"}, false, "A:\n  B:\n  END\nEND\nEND", "Too many ENDs in KDX"},
    {{"B"}, false, "A:\nEND\np = 1", "Attempt to add parameter before object opened"},
    {{"A"}, true, "A:\n  x -> y", "Unknown KDX syntax found:\n  x -> y."},
};

}  // namespace

TEST(KDXToStringMapMap, collectsObjectsAndParametersOfTheTypesAskedFor) {
    for (const auto& [text, outcome] : kRows) expectOutcome(text, outcome);
    for (const FilterRow& row : kFilters)
        expectOutcome(row.text, row.outcome, row.types, row.exclude);
}

TEST(KDXToStringMapMap, readsTheWorkedExample) {
    const std::string text = readData("filters.kdx");
    const std::string samples =
        "/Sample:s1 {Rate=10, Unit=Hz}\n/Sample:s1/Channel:A {Gain=2}\n/Sample:s1/Channel:B {}\n";
    expectOutcome(text, "/Config {Mode=fast}\n" + samples);
    expectOutcome(text, "/Config {Mode=fast}\n", {"Config"}, false);
    expectOutcome(text, samples, {"Config"}, true);
}

TEST(KDXToStringMapMap, addsToWhatTheMapHolds) {
    expectOutcome("B:\n  p = 1\n  q = 2\nEND\nA:\nEND\nD:\n  C:\n  END\n  d = 5\nEND",
                  "/A {}\n/B {p=0, q=2}\n/C {}\n/D {d=5}\n/D/C {}\n/E {}\n", {}, false,
                  {{"/B", {{"p", "0"}}}, {"/C", {}}, {"/E", {}}});
}

TEST(KDXToStringMapMap, parsesAgainWithTheObjectsThatItLeftOpen) {
    StringMapMap map;
    KDXToStringMapMap converter(std::string("A:\n  p = 1\n"), map);
    KDXToStringMapMap copy(converter);
    converter.parse();
    EXPECT_EQ(dump(map), "/A {p=1}\n/A/A {p=1}\n");
    copy.setCommands({"  q = 2", "  B:", "  END", "  r = 3", "END", "END"});
    EXPECT_THROW(copy.parse(), KDXToStringMapMap::Except);
    EXPECT_EQ(dump(map), "/A {p=1, q=2, r=3}\n/A/A {p=1}\n/A/B {}\n");
}

TEST(KDXToStringMapMap, parsesAgainInsideTheObjectThatItLeftOut) {
    StringMapMap map;
    const Types types{"B"};
    KDXToStringMapMap converter(std::string("A:\n  C:"), map, types, false);
    KDXToStringMapMap copy(converter);
    copy.setCommands({"p = 1", "END", "B:", "END", "END", "B:", "q = 2"});
    copy.parse();
    EXPECT_EQ(dump(map), "/B {q=2}\n");
}

TEST(KDXToStringMapMap, fillsAMapThatWasClearedSinceTheWalkBefore) {
    StringMapMap map;
    KDXToStringMapMap converter(readData("filters.kdx"), map);
    const StringMapMap before = map;
    map.clear();
    converter.parse();
    EXPECT_EQ(map, before);
}

TEST(KDXToStringMapMap, letsASubclassTakeObjectsOutOfTheMapAsTheyEnd) {
    struct Stream : KDXToStringMapMap {
        explicit Stream(StringMapMap& target)
            : KDXToStringMapMap(std::string(), target), map(target) {}
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
