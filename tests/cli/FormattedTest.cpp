#include <Formatted.h>
#include <Meaning.h>
#include <gtest/gtest.h>
#include <kiv/KDXFormatting.h>

#include <algorithm>
#include <random>
#include <string>
#include <vector>

#include "support/Text.h"

// The tool lays out a long text in parts. Nothing of that may show.

namespace {

std::string randomObject(std::mt19937& random, int depth) {
    const std::vector<std::string> lines = {
        "x = 1\n", "  x = 1, \\\n 2\n", "# c\n", "# c \\ \n\n", "> go\n",
        "! v\n",   "   # c\n",          "\n"};
    std::string text = "A: a\n";
    for (auto count = random() % 400; count > 0; --count) text += lines[random() % lines.size()];
    for (auto count = random() % 3; depth > 0 && count > 0; --count)
        text += randomObject(random, depth - 1);
    const std::vector<std::string> ends = {"END\n", "  END # c\n", "END # a\\b\n", "\tEND\n"};
    return text + ends[random() % ends.size()];
}

TEST(Formatted, IsWhatTheLibraryMakesOfTheWholeText) {
    std::mt19937 random(8);
    std::string text;
    while (text.size() < 1000000) text += randomObject(random, 3) + (random() % 2 != 0 ? "\n" : "");
    text += std::string(200000, '\n');
    kdx::CheckedSource source{{"text", text, false}, {}};

    std::string formatted;
    kdx::Outcome outcome;
    ASSERT_TRUE(kdx::formatSource(source, kdx::Settings(), formatted, outcome))
        << outcome.diagnostics;
    EXPECT_EQ(linesOf(formatted), kiv::KDXFormatting::indentKDX(linesOf(text)));

    source.buffer += "A:\n  \\\nx = 1\nEND\n";
    EXPECT_FALSE(kdx::formatSource(source, kdx::Settings(), formatted, outcome));
    const auto line = std::count(source.buffer.begin(), source.buffer.end(), '\n') - 2;
    EXPECT_EQ(outcome.diagnostics.rfind("text:" + std::to_string(line) + ":3: error: ", 0), 0U)
        << outcome.diagnostics;
}

TEST(Meaning, IsNotTheSameWhenStatementsAreMissing) {
    EXPECT_TRUE(kdx::sameMeaning("A:\nx = 1 # c\n", " A:\n\n  x = 1\n"));
    for (const char* less : {"", "A:\n", "A:\nx = 1\n", "x = 1\nEND\n"}) {
        EXPECT_FALSE(kdx::sameMeaning("A:\nx = 1\nEND\n", less)) << less;
        EXPECT_FALSE(kdx::sameMeaning(less, "A:\nx = 1\nEND\n")) << less;
    }
}

}  // namespace
