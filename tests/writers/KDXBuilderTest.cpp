#include <gtest/gtest.h>
#include <kiv/Error.h>
#include <kiv/KDXBuilder.h>

#include <limits>
#include <locale>
#include <string>
#include <utility>
#include <vector>

#include "support/Failure.h"
#include "support/Text.h"

using kiv::ActionBuilder;
using kiv::KDXBuilder;
using List = std::vector<std::string>;

namespace {

/// Writes 1234.5 as "1.234,5".
class Grouping : public std::numpunct<char> {
    char do_decimal_point() const override { return ','; }
    char do_thousands_sep() const override { return '.'; }
    std::string do_grouping() const override { return "\3"; }
};

/// The text after closing all, which takes it from a builder with objects open, too.
std::string closed(KDXBuilder builder) {
    builder.popAll();
    return builder.getKDX();
}

std::string failure(const char* function, const std::string& message) {
    return std::string("KDXBuilder::") + function + " (4): " + message;
}

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
    struct Row {
        const char* text;
        void (*call)(KDXBuilder&);
    };
    for (const auto& [text, call] : {
             Row{"", [](KDXBuilder& b) { b.popAll(); }},
             Row{"T: n\nEND\n", [](KDXBuilder& b) { b.pushObject("T", "n"); }},
             Row{"T: \nEND\n", [](KDXBuilder& b) { b.pushObject("T", ""); }},
             Row{"T:\nEND\n", [](KDXBuilder& b) { b.pushObject("T"); }},
             Row{"&replace T:\nEND\n", [](KDXBuilder& b) { b.pushReplacedObject("T"); }},
             Row{"N = \n", [](KDXBuilder& b) { b.addParam("N", List{}); }},
             Row{"N = a, , #b\\\n",
                 [](KDXBuilder& b) {
                     b.addParam("N", List{"a", "", "#b\\"});
                 }},
             Row{" a-b  =  c # d \n", [](KDXBuilder& b) { b.addParam(" a-b ", " c # d "); }},
             Row{">Go \n", [](KDXBuilder& b) { b.addAction("  >Go  "); }},
             Row{">Go \n", [](KDXBuilder& b) { b.addAction("Go", ""); }},
             Row{">Go now \n", [](KDXBuilder& b) { b.addAction("Go", "now "); }},
             Row{">Go \n", [](KDXBuilder& b) { b.addAction("Go", List{}); }},
             Row{">  Go a,,b\n",
                 [](KDXBuilder& b) {
                     b.addAction(">  Go", List{"a", "", "b"});
                 }},
             Row{">> \n", [](KDXBuilder& b) { b.addAction(ActionBuilder("> ")); }},
             Row{"> \n", [](KDXBuilder& b) { b.addAction(">"); }},
             Row{"", [](KDXBuilder& b) { b.pushRoot(""); }},
             Row{"Sample: s1\n  Channel:\n    A: b:c\n    END\n  END\nEND\n",
                 [](KDXBuilder& b) { b.pushRoot("/Sample:s1/Channel:Channel/A:b:c"); }},
             Row{"A:\n  B: x\n  END\nEND\n",
                 [](KDXBuilder& b) { b.pushObject("A"), b.pushRoot("/B:x"); }},
             // the builder's own text as an argument
             Row{"x = 1\nx = x = 1\n\n",
                 [](KDXBuilder& b) { b.addParam("x", 1), b.addParam("x", b.getKDX()); }},
             Row{">Go \n>Go >Go \n\n",
                 [](KDXBuilder& b) { b.addAction("Go"), b.addAction("Go", b.getKDX()); }},
             Row{": \n  : \n:\n    : \n  : \n:\n = \n  END\nEND\n",
                 [](KDXBuilder& b) {
                     const std::string& own = b.getKDX();
                     b.pushObject(own, own), b.pushObject(own);
                     b.addParam(own, "");
                 }},
         }) {
        KDXBuilder builder;
        call(builder);
        EXPECT_EQ(closed(builder), text);
    }
    KDXBuilder rooted("/Sample:s1/Channel");
    rooted.addParam("x", "1");
    EXPECT_EQ(closed(rooted), "Sample: s1\n  Channel:\n    x = 1\n  END\nEND\n");
}

TEST(KDXBuilder, writesNumbersAlikeInEveryLocale) {
    struct Row {
        double value;
        const char *unit, *text;
    };
    const std::locale before = std::locale::global({std::locale::classic(), new Grouping});
    for (const auto& [value, unit, text] : {
             Row{2.5, "", "2.5"},
             Row{100.0, " \t", "100"},
             Row{0.0001, "", "0.0001"},
             Row{0.00001, "", "1e-05"},
             Row{1234567.0, "", "1.23457e+06"},
             Row{0.1, "", "0.1"},
             Row{123456.0, "", "123456"},
             Row{999999.5, "", "1e+06"},
             Row{-0.0, "", "-0"},
             Row{1e100, "", "1e+100"},
             Row{std::numeric_limits<double>::max(), "", "1.79769e+308"},
             Row{5e-324, "", "4.94066e-324"},
             Row{1.0, " mm ", "1 [mm]"},
             Row{1.0, "[mm", "1 [mm]"},
             Row{1.0, "mm]", "1 [mm]"},
             Row{1.0, "[mm]", "1 [mm]"},
             Row{1.0, "[", "1 []"},
             Row{1.0, "]", "1 []"},
         }) {
        KDXBuilder builder;
        builder.addParam("x", value, unit);
        EXPECT_EQ(builder.getKDX(), "x = " + std::string(text) + "\n");
        if (std::string(text).find('[') != std::string::npos) continue;
        KDXBuilder plain;
        plain.addParam("x", value);
        EXPECT_EQ(plain.getKDX(), builder.getKDX());
    }
    KDXBuilder builder;
    for (const int value : {-7, 0, 1234567, std::numeric_limits<int>::min()})
        builder.addParam("x", value);
    EXPECT_EQ(builder.getKDX(), "x = -7\nx = 0\nx = 1234567\nx = -2147483648\n");
    for (int i = 0; i < 1234; ++i) builder.pushObject("T");
    EXPECT_EQ(
        failureOf<kiv::internal::error>([&] { builder.addAction("Go"); }),
        failure("addAction", "Cannot add an action unless at root level. Current level = 1234"));
    std::locale::global(before);
}

TEST(KDXBuilder, failsWithoutAChange) {
    const std::string level =
        failure("addAction", "Cannot add an action unless at root level. Current level = 1");
    const std::string empty = failure("addActionCommon", "Internal error - empty action name.");
    struct Row {
        bool inObject;
        std::string failure;
        void (*call)(KDXBuilder&);
    };
    for (const auto& [inObject, expected, call] : {
             Row{true, level, [](KDXBuilder& b) { b.addAction("Go"); }},
             Row{true, level, [](KDXBuilder& b) { b.addAction(""); }},
             Row{true, level, [](KDXBuilder& b) { b.addAction("Go", "now"); }},
             Row{true, level, [](KDXBuilder& b) { b.addAction("Go", List{"now"}); }},
             Row{true, level, [](KDXBuilder& b) { b.addAction(ActionBuilder("Go")); }},
             Row{false, empty, [](KDXBuilder& b) { b.addAction(" \t"); }},
             Row{false, empty, [](KDXBuilder& b) { b.addAction("", "now"); }},
             Row{false, empty, [](KDXBuilder& b) { b.addAction("\n", List{"now"}); }},
             Row{true,
                 failure("getKDX",
                         "Internal error in specifying object nesting. Objects remain open."),
                 [](KDXBuilder& b) { b.getKDX(); }},
             Row{false, failure("popObject", "Internal error in specifying object nesting."),
                 [](KDXBuilder& b) { b.popObject(); }},
         }) {
        KDXBuilder builder;
        builder.addParam("x", 1);
        if (inObject) builder.pushObject("T");
        EXPECT_EQ(failureOf<kiv::internal::error>([&, call = call] { call(builder); }), expected);
        builder.addParam("y", 2);
        EXPECT_EQ(closed(builder), inObject ? "x = 1\nT:\n  y = 2\nEND\n" : "x = 1\ny = 2\n");
    }
}

TEST(KDXBuilder, copiesCarryOnAndMovesLeaveNoText) {
    KDXBuilder source("/A/B");
    KDXBuilder copy = source;
    copy.popObject();
    copy.addParam("x", 1);
    EXPECT_EQ(closed(copy), "A:\n  B:\n  END\n  x = 1\nEND\n");
    EXPECT_EQ(closed(source), "A:\n  B:\n  END\nEND\n");
    copy = source;
    EXPECT_EQ(closed(copy), closed(source));

    // NOLINTBEGIN(bugprone-use-after-move): what a move leaves behind is promised.
    KDXBuilder moved = std::move(source);
    EXPECT_EQ(closed(moved), closed(copy));
    source.popAll();  // at the level that it had, with no indentation left
    EXPECT_EQ(source.getKDX(), "END\nEND\n");
    source = std::move(moved);
    EXPECT_EQ(closed(source), closed(copy));
    EXPECT_EQ(closed(moved), "END\nEND\n");
    // NOLINTEND(bugprone-use-after-move)
}
