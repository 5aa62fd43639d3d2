#include <gtest/gtest.h>
#include <kiv/Messages.h>

#include <iostream>
#include <limits>
#include <sstream>
#include <string>
#include <vector>

namespace {

std::string warning(int number, const std::string& argument) {
    return "Warning: token %" + std::to_string(number) + " was not used in the message: \"" +
           argument + "\"";
}

struct Row {
    std::string text;
    std::vector<std::string> arguments;
    std::string filled;
    std::string warned = "";
};
const std::vector<Row> kRows = {
    {"Unknown KDX syntax found:\n%1.", {"gain -> 3"}, "Unknown KDX syntax found:\ngain -> 3."},
    {"100% of %1 and %1", {"a"}, "100% of a and a"},
    {"%1%1%2", {"", "b"}, "b"},
    {"%2 before %1", {"a", "b"}, "b before a"},
    {"%1, %%1", {"<%1%1>"}, "<%1%1>, %<%1%1>"},
    {"%1 %2", {"%2", "b"}, "b b"},  // what an argument brings in is text like any other
    {"", {"abc"}, "", warning(1, "abc")},
    {"%10 %1 %11", {"a", "2"}, "%10 a %11", warning(2, "2")},
};

}  // namespace

TEST(MessageTemplates, userMsgFillsItsTokensAndWarnsForEachOfItsTwoTexts) {
    std::streambuf* const errorStream = std::cerr.rdbuf();
    for (const Row& row : kRows) {
        const std::ostringstream errors;
        std::cerr.rdbuf(errors.rdbuf());
        kiv::UserMsg message(row.text, nullptr);
        for (const std::string& argument : row.arguments)
            EXPECT_EQ(&message.arg(argument), &message);
        std::cerr.rdbuf(errorStream);
        EXPECT_EQ(std::string(message), row.filled) << row.text;
        EXPECT_EQ(errors.str(), row.warned + row.warned) << row.text;
    }
}

TEST(MessageTemplates, systemMsgFillsInNumbersAndCountsBeyondNine) {
    kiv::SystemMsg message("%1 %2 %3 %4%5%6%7%8%9 %10 %11");
    message.arg(0).arg(1234567).arg(std::numeric_limits<std::int32_t>::min());
    for (int i = 4; i <= 10; ++i) message.arg(-i);
    EXPECT_EQ(std::string(message), "0 1234567 -2147483648 -4-5-6-7-8-9 -10 %11");
}
