#include <kiv/ExtractActionOrStateFromKDX.h>

#include "support/Text.h"

using namespace kiv::ExtractActionOrStateFromKDX;

namespace {

/// The runs as text: a line "Action" or "State", then the run's lines.
std::string runsOf(const std::string& text) {
    std::string runs;
    for (const auto& [kind, run] : extractActionOrStateFromKDX(text))
        runs += (kind == Action ? "Action\n" : "State\n") + run + "\n";
    return runs;
}

const std::vector<Case> kRows = {
    {"", ""},
    {"\n  \n# c\n \t# d\n", ""},
    {">a\n\n  # c\n>b", "Action\n>a\n>b\n"},
    {"x\n# > c\n\ny\n", "State\nx\ny\n"},
    {"  > a # c \r\n", "Action\n> a\n"},
    {" ! a # b \n$ a # b \n- odd", "State\n! a # b \n$ a\n- odd\n"},
    {">a\\\n  b \\\nc # d\nx", "Action\n>ab c\nState\nx\n"},
    {"\\\n  >a\nx", "Action\n>a\nState\nx\n"},
    {"x \\\n\n>a", "State\nx\nAction\n>a\n"},
    {"x \\\n  # c\n>a", "State\nx\nAction\n>a\n"},
    // the very last character continues a line, in a comment, too, and no other does
    {"x # c\\\n>a\n>b", "State\nx\nAction\n>b\n"},
    {"x \\ \n>a", "State\nx \\\nAction\n>a\n"},
    {"x \\\r\n>a", "State\nx \\\nAction\n>a\n"},
    // continued at the end of the text
    {"x \\\n", "State\nx\n"},
    {"\\", ""},
};

}  // namespace

TEST(Extraction, dividesADocument) {
    EXPECT_EQ(runsOf(readData("runs.kdx")), readData("runs.txt"));
    for (const auto& [text, runs] : kRows) EXPECT_EQ(runsOf(text), runs) << text;
}
