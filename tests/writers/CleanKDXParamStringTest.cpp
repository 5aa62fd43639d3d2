#include <kiv/CleanKDXParamString.h>

#include "support/Text.h"
#include "support/ValueSemantics.h"

using kiv::CleanKDXParamString;

TEST(CleanKDXParamString, cutsTheLastRunOfBackslashes) {
    for (const auto& [value, cleaned] :
         {Case{"abc", "abc"}, Case{"abc\\\\\\", "abc"}, Case{"\\a\\b", "\\a\\b"},
          Case{"abc\\ ", "abc\\ "}, Case{"abc\\\n", "abc\\\n"}, Case{"abc \\", "abc "},
          Case{"\\", ""}, Case{"\\\\", ""}, Case{"", ""}}) {
        const CleanKDXParamString clean{value};
        const std::string& converted = clean;
        EXPECT_EQ(converted, cleaned) << value;
        EXPECT_EQ(&converted, &clean.str());
    }
}

TEST(CleanKDXParamString, isAValue) {
    const auto textOf = [](const auto& value) { return value.str(); };
    expectValueSemantics(CleanKDXParamString("a\\"), CleanKDXParamString("b"), textOf, "");
}
