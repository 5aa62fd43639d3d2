#include <kiv/KDXBuilder.h>

#include <cstdint>
#include <limits>
#include <utility>

#include "support/Failure.h"
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
    const char* text;
    void (*call)(KDXBuilder&);
};
const std::vector<Row> kCalls = {
    {"T: n\nEND\n", [](auto& b) { b.pushObject("T", "n"); }},
    {"T: \nEND\n", [](auto& b) { b.pushObject("T", ""); }},
    {"T:\nEND\n", [](auto& b) { b.pushObject("T"); }},
    {"&replace T:\nEND\n", [](auto& b) { b.pushReplacedObject("T"); }},
    {"&replace T: n\nEND\n", [](auto& b) { b.pushReplacedObject("T", "n"); }},
    {"T:\nEND\nx = 2.5 [ml]\n>Go \n",
     [](auto& b) {
         b.pushObject("T"), b.popObject(), b.addParam("x", 2.5, "ml"), b.addAction("Go");
     }},
    {"N = \n", [](auto& b) { b.addParam("N", List{}); }},
    {">Go \n", [](auto& b) { b.addAction("Go", List{}); }},
    {"N = a, , #\\\n", [](auto& b) { b.addParam("N", kList); }},
    {" a-b  =  c # d \n", [](auto& b) { b.addParam(" a-b ", " c # d "); }},
    {">Go \n", [](auto& b) { b.addAction("  >Go  "); }},
    {">Go now \n", [](auto& b) { b.addAction("Go", "now "); }},
    {">  Go a,,#\\\n", [](auto& b) { b.addAction(">  Go", kList); }},
    {">> \n", [](auto& b) { b.addAction(ActionBuilder("> ")); }},
    {"> \n", [](auto& b) { b.addAction(">"); }},
    {"A: b:c\n  T:\n  END\nEND\n", [](auto& b) { b.pushRoot("/A:b:c/T:T"); }},
    {"A:\n  B: x\n  END\nEND\n", [](auto& b) { b.pushRoot("/A"), b.pushRoot("/B:x"); }},
    // the builder's own text as an argument
    {"x = 1\nx = x = 1\n\n", [](auto& b) { b.addParam("x", 1), b.addParam("x", b.getKDX()); }},
    {">Go \n>Go >Go \n\n", [](auto& b) { b.addAction("Go"), b.addAction("Go", b.getKDX()); }},
    {": \n  : \n:\n    : \n  : \n:\n = \n  END\nEND\n", openOwnText},
};

const std::string kLevel =
    "KDXBuilder::addAction (4): Cannot add an action unless at root level. Current level = ";
const std::string kEmpty = "KDXBuilder::addActionCommon (4): Internal error - empty action name.";
const std::string kNesting = " (4): Internal error in specifying object nesting.";

/// What the call throws inside the objects of `root`, having seen that it changes nothing.
std::string refusalOf(void (*call)(KDXBuilder&), const std::string& root = "") {
    KDXBuilder builder(root);
    const std::string before = closed(builder);
    const std::string failure = failureOf<kiv::internal::error>([&] { call(builder); });
    EXPECT_EQ(closed(builder), before) << failure;
    return failure;
}

}  // namespace

TEST(KDXBuilder, writesWhatEachCallSays) {
    for (const auto& [text, call] : kCalls) {
        KDXBuilder builder;
        call(builder);
        EXPECT_EQ(closed(builder), text);
    }
}

TEST(KDXBuilder, writesNumbersAlikeInEveryLocale) {
    const auto textOf = [](auto... value) {
        KDXBuilder builder;
        builder.addParam("x", value...);
        return builder.getKDX().substr(4);
    };
    EXPECT_EQ(textOf(1234567), "1234567\n");
    EXPECT_EQ(textOf(std::numeric_limits<int>::min()), "-2147483648\n");
    EXPECT_EQ(textOf(std::numeric_limits<long long>::min()), "-9223372036854775808\n");
    EXPECT_EQ(textOf(std::numeric_limits<unsigned long long>::max()), "18446744073709551615\n");
    EXPECT_EQ(textOf(std::int8_t(-128)) + textOf(true), "-128\n1\n");
    EXPECT_EQ(textOf(2.5), "2.5\n");
    for (const auto& [value, text] :
         {std::pair(100.0, "100"), std::pair(0.0001, "0.0001"), std::pair(0.00001, "1e-05"),
          std::pair(1234567.0, "1.23457e+06"), std::pair(123456.0, "123456"),
          std::pair(999999.5, "1e+06"), std::pair(-0.0, "-0"),
          std::pair(std::numeric_limits<double>::max(), "1.79769e+308"),
          std::pair(5e-324, "4.94066e-324")})
        EXPECT_EQ(textOf(value, " \t"), std::string(text) + "\n");
    for (const char* unit : {" mm ", "[mm", "mm]"}) EXPECT_EQ(textOf(1.0, unit), "1 [mm]\n");
    for (const char* unit : {"[", "]"}) EXPECT_EQ(textOf(1.0, unit), "1 []\n");
}

TEST(KDXBuilder, failsWithoutAChange) {
    EXPECT_EQ(refusalOf([](auto& b) { b.addAction(" \t"); }), kEmpty);
    EXPECT_EQ(refusalOf([](auto& b) { b.addAction("\n", kList); }), kEmpty);
    EXPECT_EQ(refusalOf([](auto& b) { b.popObject(); }), "KDXBuilder::popObject" + kNesting);
    EXPECT_EQ(refusalOf([](auto& b) { b.getKDX(); }, "/A"),
              "KDXBuilder::getKDX" + kNesting + " Objects remain open.");
    EXPECT_EQ(refusalOf([](auto& b) { b.addAction(""); }, "/A"), kLevel + "1");
    EXPECT_EQ(refusalOf([](auto& b) { b.addAction("Go", kList); }, "/A/B"), kLevel + "2");
    std::string root;
    for (int i = 0; i < 1234; ++i) root += "/A";
    EXPECT_EQ(refusalOf([](auto& b) { b.addAction(ActionBuilder("Go")); }, root), kLevel + "1234");
}

TEST(KDXBuilder, isAValueOfWhichAMoveTakesTheTextAndNotTheLevel) {
    expectValueSemantics(KDXBuilder("/A/B"), KDXBuilder("/C"), closed, "END\nEND\n");
}
