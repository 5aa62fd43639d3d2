#include <gtest/gtest.h>
#include <kiv/Messages.h>

#include <iostream>
#include <limits>
#include <locale>
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

std::string warning(const std::string& number, const std::string& argument) {
    return "Warning: token %" + number + " was not used in the message: \"" + argument + "\"";
}

struct Row {
    std::string text;
    std::vector<std::string> arguments;
    std::string filled;
    std::string onceWarned;  // what one of the two texts of a UserMsg warns of
};
const std::vector<Row> kRows = {
    {"Unknown KDX syntax found:\n%1.", {"gain -> 3"}, "Unknown KDX syntax found:\ngain -> 3.", ""},
    {"%1 and %1", {"a"}, "a and a", ""},
    {"%1%1%2", {"", "b"}, "b", ""},
    {"%2 before %1", {"a"}, "%2 before a", ""},
    {"%2 before %1", {"a", "b"}, "b before a", ""},
    {"100% of %1", {"it"}, "100% of it", ""},
    {"%1", {"%1"}, "%1", ""},
    {"%1, %1", {"<%1%1>"}, "<%1%1>, <%1%1>", ""},
    {"%%1", {"a"}, "%a", ""},
    {"%1 %2", {"%2", "b"}, "b b", ""},  // what an argument brings in is text like any other
    {"plain", {"abc"}, "plain", warning("1", "abc")},
    {"", {""}, "", warning("1", "")},
    {"%1", {"a", "b", "c"}, "a", ""},
    {"%10 %1 %11", {"a", "2", "3", "4", "5", "6", "7", "8", "9", "j", "k"}, "j a k", ""},
};

}  // namespace

TEST(MessageTemplates, userMsgFillsItsTokensAndWarnsForEachOfItsTwoTexts) {
    for (const Row& row : kRows) {
        const ErrorStream errors;
        kiv::UserMsg message(row.text, nullptr);
        for (const std::string& argument : row.arguments)
            EXPECT_EQ(&message.arg(argument), &message);
        EXPECT_EQ(std::string(message), row.filled) << row.text;
        if (row.arguments.size() == 1) {
            EXPECT_EQ(errors.text(), row.onceWarned + row.onceWarned) << row.text;
        }
    }
}

TEST(MessageTemplates, anArgumentTooManyWarnsWithItsOwnNumber) {
    const ErrorStream errors;
    kiv::SystemMsg message("level %1");
    message.arg(1).arg(-2).arg(3);
    EXPECT_EQ(std::string(message), "level 1");
    EXPECT_EQ(errors.text(), warning("2", "-2") + warning("3", "3"));
}

TEST(MessageTemplates, systemMsgWritesDecimalDigitsWhateverTheGlobalLocale) {
    struct Grouping : std::numpunct<char> {
        std::string do_grouping() const override { return "\3"; }
    };
    const std::locale before = std::locale::global(std::locale(std::locale(), new Grouping));
    const ErrorStream errors;
    kiv::SystemMsg message("%1 %2 %3 %4");
    message.arg(0).arg(-1).arg(1234567).arg(std::numeric_limits<std::int32_t>::min());
    EXPECT_EQ(std::string(message), "0 -1 1234567 -2147483648");
    EXPECT_EQ(errors.text(), "");
    std::locale::global(before);
}
