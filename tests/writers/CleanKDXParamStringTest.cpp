#include <gtest/gtest.h>
#include <kiv/CleanKDXParamString.h>

#include <string>
#include <utility>

using kiv::CleanKDXParamString;

TEST(CleanKDXParamString, cutsTheLastRunOfBackslashes) {
    struct Row {
        const char *value, *cleaned;
    };
    for (const auto& [value, cleaned] :
         {Row{"abc", "abc"}, Row{"abc\\", "abc"}, Row{"abc\\\\\\", "abc"}, Row{"a\\b", "a\\b"},
          Row{"\\abc", "\\abc"}, Row{"abc\\ ", "abc\\ "}, Row{"abc\\\n", "abc\\\n"},
          Row{"abc \\", "abc "}, Row{"\\", ""}, Row{"\\\\", ""}, Row{"", ""}}) {
        const CleanKDXParamString clean{value};
        EXPECT_EQ(clean.str(), cleaned) << value;
        const std::string& converted = clean;
        EXPECT_EQ(&converted, &clean.str());
    }
}

TEST(CleanKDXParamString, copiesAreIndependentAndMovesLeaveNoText) {
    CleanKDXParamString source("a\\");
    CleanKDXParamString copy = source;
    copy = CleanKDXParamString("b\\");
    EXPECT_EQ(source.str() + copy.str(), "ab");
    copy = source;
    EXPECT_EQ(source.str() + copy.str(), "aa");

    // NOLINTBEGIN(bugprone-use-after-move): what a move leaves behind is promised.
    CleanKDXParamString moved = std::move(source);
    EXPECT_EQ(moved.str() + "|" + source.str(), "a|");
    source = std::move(moved);
    EXPECT_EQ(source.str() + "|" + moved.str(), "a|");
    // NOLINTEND(bugprone-use-after-move)
}
