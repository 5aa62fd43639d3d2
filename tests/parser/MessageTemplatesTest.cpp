#include <gtest/gtest.h>
#include <kiv/Messages.h>

#include <iostream>
#include <limits>
#include <sstream>
#include <string>
#include <vector>

namespace {

/// Takes what goes to the standard error stream while it lives.
class ErrorStream {
public:
    ErrorStream() : before(std::cerr.rdbuf(stream.rdbuf())) {}
    ErrorStream(const ErrorStream&) = delete;
    ErrorStream& operator=(const ErrorStream&) = delete;
    ~ErrorStream() { std::cerr.rdbuf(before); }
    std::string text() const { return stream.str(); }

private:
    std::ostringstream stream;
    std::streambuf* before;
};

std::string warning(int number, const std::string& argument) {
    return "Warning: token %" + std::to_string(number) + " was not used in the message: \"" +
           argument + "\"";
}

struct Row {
    std::string text;
    std::vector<std::string> arguments;
    std::string filled;
    std::string warned;  // once for each of the two texts of a UserMsg
};
const std::vector<Row> kRows = {
    {"Unknown KDX syntax found:\n%1.", {"gain -> 3"}, "Unknown KDX syntax found:\ngain -> 3.", ""},
    {"100% of %1 and %1", {"a"}, "100% of a and a", ""},
    {"%1%1%2", {"", "b"}, "b", ""},
    {"%2 before %1", {"a", "b"}, "b before a", ""},
    {"%1, %%1", {"<%1%1>"}, "<%1%1>, %<%1%1>", ""},
    {"%1 %2", {"%2", "b"}, "b b", ""},  // what an argument brings in is text like any other
    {"plain", {"abc"}, "plain", warning(1, "abc") + warning(1, "abc")},
    {"", {""}, "", warning(1, "") + warning(1, "")},
    {"%10 %1 %11", {"a", "2"}, "%10 a %11", warning(2, "2") + warning(2, "2")},
};

}  // namespace

TEST(MessageTemplates, userMsgFillsItsTokensAndWarnsForEachOfItsTwoTexts) {
    for (const Row& row : kRows) {
        const ErrorStream errors;
        kiv::UserMsg message(row.text, nullptr);
        for (const std::string& argument : row.arguments)
            EXPECT_EQ(&message.arg(argument), &message);
        EXPECT_EQ(std::string(message), row.filled) << row.text;
        EXPECT_EQ(errors.text(), row.warned) << row.text;
    }
}

TEST(MessageTemplates, systemMsgFillsInNumbersAndCountsBeyondNine) {
    const ErrorStream errors;
    kiv::SystemMsg message("%1 %2 %3 %10 %11");
    message.arg(0).arg(1234567).arg(std::numeric_limits<std::int32_t>::min());
    for (int i = 4; i <= 10; ++i) message.arg(-i);
    EXPECT_EQ(std::string(message), "0 1234567 -2147483648 -10 %11");
    std::string warnings;
    for (int i = 4; i <= 9; ++i) warnings += warning(i, std::to_string(-i));
    EXPECT_EQ(errors.text(), warnings);
}
