#include <gtest/gtest.h>
#include <kiv/Error.h>
#include <kiv/KDXText.h>

#include "support/Failure.h"

TEST(ApplyEdits, makesReplacementsInOrder) {
    EXPECT_EQ(kiv::applyEdits("abc", {}), "abc");
    EXPECT_EQ(kiv::applyEdits("abc", {{0, 0, "1"}, {0, 0, "2"}, {1, 1, ""}, {3, 0, "3"}}), "12ac3");
    const auto failure = [](const std::vector<kiv::KDXTextEdit>& edits) {
        return failureOf<kiv::internal::error>([&] { kiv::applyEdits("abc", edits); });
    };
    const std::string outside = "KDXText::applyEdits (4): An edit lies outside of the text.";
    EXPECT_EQ(failure({{4, 0, ""}}), outside);
    EXPECT_EQ(failure({{1, std::string::npos, ""}}), outside);
    EXPECT_EQ(failure({{1, 2, ""}, {2, 0, ""}}),
              "KDXText::applyEdits (4): The edits overlap or are out of order.");
}
