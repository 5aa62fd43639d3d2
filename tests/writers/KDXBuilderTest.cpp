#include <kiv/Error.h>
#include <kiv/KDXBuilder.h>

#include <limits>
#include <string>
#include <vector>

#include "support/Failure.h"
#include "support/Text.h"
#include "support/ValueSemantics.h"

using kiv::ActionBuilder;
using kiv::KDXBuilder;
using List = std::vector<std::string>;

namespace {

const List kList{"a", "", "#\\"};

/// The text after closing all, which takes it from a builder with objects open, too.
std::string closed(KDXBuilder builder) {
    builder.popAll();
    return builder.getKDX();
}

void openOwnText(KDXBuilder& builder) {
    const std::string& own = builder.getKDX();
    builder.pushObject(own, own), builder.pushObject(own);
    builder.addParam(own, "");
}

struct Row {
    std::string text;
    void (*call)(KDXBuilder&);
};
const std::vector<Row> kCalls = {
    {"", [](auto& b) { b.popAll(); }},
    {"T: n\nEND\n", [](auto& b) { b.pushObject("T", "n"); }},
    {"T: \nEND\n", [](auto& b) { b.pushObject("T", ""); }},
    {"T:\nEND\n", [](auto& b) { b.pushObject("T"); }},
    {"&replace T:\nEND\n", [](auto& b) { b.pushReplacedObject("T"); }},
    {"N = \n", [](auto& b) { b.addParam("N", List{}); }},
    {"N = a, , #\\\n", [](auto& b) { b.addParam("N", kList); }},
    {" a-b  =  c # d \n", [](auto& b) { b.addParam(" a-b ", " c # d "); }},
    {">Go \n", [](auto& b) { b.addAction("  >Go  "); }},
    {">Go \n", [](auto& b) { b.addAction("Go", ""); }},
    {">Go now \n", [](auto& b) { b.addAction("Go", "now "); }},
    {">Go \n", [](auto& b) { b.addAction("Go", List{}); }},
    {">  Go a,,#\\\n", [](auto& b) { b.addAction(">  Go", kList); }},
    {">> \n", [](auto& b) { b.addAction(ActionBuilder("> ")); }},
    {"> \n", [](auto& b) { b.addAction(">"); }},
    {"", [](auto& b) { b.pushRoot(""); }},
    {"A: b:c\n  T:\n  END\nEND\n", [](auto& b) { b.pushRoot("/A:b:c/T:T"); }},
    {"A:\n  B: x\n  END\nEND\n", [](auto& b) { b.pushRoot("/A"), b.pushRoot("/B:x"); }},
    // the builder's own text as an argument
    {"x = 1\nx = x = 1\n\n", [](auto& b) { b.addParam("x", 1), b.addParam("x", b.getKDX()); }},
    {">Go \n>Go >Go \n\n", [](auto& b) { b.addAction("Go"), b.addAction("Go", b.getKDX()); }},
    {": \n  : \n:\n    : \n  : \n:\n = \n  END\nEND\n", openOwnText},
};

const std::string kLevel =
    "addAction (4): Cannot add an action unless at root level. Current level = ";
const std::string kEmpty = "addActionCommon (4): Internal error - empty action name.";
const std::string kNesting = " (4): Internal error in specifying object nesting.";
const std::vector<Row> kFailuresInObject = {
    {kLevel + "1", [](auto& b) { b.addAction("Go"); }},
    {kLevel + "1", [](auto& b) { b.addAction(""); }},
    {kLevel + "1", [](auto& b) { b.addAction("Go", "now"); }},
    {kLevel + "1", [](auto& b) { b.addAction("Go", kList); }},
    {kLevel + "1", [](auto& b) { b.addAction(ActionBuilder("Go")); }},
    {"getKDX" + kNesting + " Objects remain open.", [](auto& b) { b.getKDX(); }},
};
const std::vector<Row> kFailures = {
    {kEmpty, [](auto& b) { b.addAction(" \t"); }},
    {kEmpty, [](auto& b) { b.addAction("", "now"); }},
    {kEmpty, [](auto& b) { b.addAction("\n", kList); }},
    {"popObject" + kNesting, [](auto& b) { b.popObject(); }},
};

}  // namespace

TEST(KDXBuilder, buildsADocument) {
    KDXBuilder builder;
    builder.addAction("Reset");
    builder.pushObject("Sample", "s1");
    builder.addParam("Volume", 2.5, "ml");
    builder.addParam("Count", 3);
    builder.pushObject("Channels");
    builder.addParam("Names", List{"A", "B"});
    builder.popObject();
    builder.pushReplacedObject("Method", "m2");
    builder.addParam("Mode", "fast");
    builder.popAll();
    builder.addAction(">Start", List{"1", "2"});
    EXPECT_EQ(builder.getKDX(), readData("built.kdx"));
}

TEST(KDXBuilder, writesWhatEachCallSays) {
    for (const Row& row : kCalls) {
        KDXBuilder builder;
        row.call(builder);
        EXPECT_EQ(closed(builder), row.text);
    }
}

TEST(KDXBuilder, writesNumbersAlikeInEveryLocale) {
    struct Number {
        double value;
        const char *unit, *text;
    };
    for (const auto& [value, unit, text] :
         {Number{100.0, " \t", "100"}, Number{0.0001, "", "0.0001"}, Number{0.00001, "", "1e-05"},
          Number{1234567.0, "", "1.23457e+06"}, Number{0.1, "", "0.1"},
          Number{123456.0, "", "123456"}, Number{999999.5, "", "1e+06"}, Number{-0.0, "", "-0"},
          Number{std::numeric_limits<double>::max(), "", "1.79769e+308"},
          Number{5e-324, "", "4.94066e-324"}, Number{1.0, " mm ", "1 [mm]"},
          Number{1.0, "[mm", "1 [mm]"}, Number{1.0, "mm]", "1 [mm]"}, Number{1.0, "[", "1 []"},
          Number{1.0, "]", "1 []"}}) {
        KDXBuilder builder;
        builder.addParam("x", value, unit);
        EXPECT_EQ(builder.getKDX(), "x = " + std::string(text) + "\n");
    }
    KDXBuilder builder;
    builder.addParam("x", 2.5);
    for (const int value : {1234567, std::numeric_limits<int>::min()}) builder.addParam("x", value);
    EXPECT_EQ(builder.getKDX(), "x = 2.5\nx = 1234567\nx = -2147483648\n");
    for (int i = 0; i < 1234; ++i) builder.pushObject("T");
    EXPECT_EQ(failureOf<kiv::internal::error>([&] { builder.addAction("Go"); }),
              "KDXBuilder::" + kLevel + "1234");
}

TEST(KDXBuilder, failsWithoutAChange) {
    for (const bool inObject : {false, true})
        for (const auto& [failure, call] : inObject ? kFailuresInObject : kFailures) {
            KDXBuilder builder;
            builder.addParam("x", 1);
            if (inObject) builder.pushObject("T");
            EXPECT_EQ(failureOf<kiv::internal::error>([&, call = call] { call(builder); }),
                      "KDXBuilder::" + failure);
            builder.addParam("y", 2);
            EXPECT_EQ(closed(builder), inObject ? "x = 1\nT:\n  y = 2\nEND\n" : "x = 1\ny = 2\n");
        }
}

TEST(KDXBuilder, isAValueOfWhichAMoveTakesTheTextAndNotTheLevel) {
    expectValueSemantics(KDXBuilder("/A/B"), KDXBuilder("/C"), closed, "END\nEND\n");
}
