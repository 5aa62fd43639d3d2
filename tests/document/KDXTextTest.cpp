#include <gtest/gtest.h>
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

TEST(VisibleText, marksWhatTerminalsObey) {
    for (const char* text : {"\x1B", "\x7F", "\xC2\x80", "\xC2\x9F", "\xD8\x9C", "\xE2\x80\x8E",
                             "\xE2\x80\xAA", "\xE2\x80\xAE", "\xE2\x81\xA6", "\xE2\x81\xA9"})
        EXPECT_EQ(kiv::visibleText(std::string("\t") + text + 'a'), " ?a") << text;
    for (const char* text : {"", "\xC2", "\xC2\xA0", "\xE2\x80", "\xE2\x80\xA9", "\xE2\x81\xAA"})
        EXPECT_EQ(kiv::visibleText(text), text);
}

TEST(FindNoUtf8, knowsEveryFormOfCharacter) {
    for (const char* text : {"", "a", "\xC3\xA4", "\xE0\xA0\x80", "\xED\x9F\xBF", "\xEF\xBF\xBF",
                             "\xF0\x90\x80\x80", "\xF1\x80\x80\x80", "\xF4\x8F\xBF\xBF"})
        EXPECT_EQ(kiv::findNoUtf8(text), std::string::npos) << text;
    for (const char* text : {"\x80", "\xC1\x80", "\xC3", "\xC3z", "\xE0\x80\x80", "\xE2\x82z",
                             "\xE2\xC0\x80", "\xED\xA0\x80", "\xF0\x80\x80\x80", "\xF1\x80\x80z",
                             "\xF4\x90\x80\x80", "\xF5\x80\x80\x80", "\xFF"})
        EXPECT_EQ(kiv::findNoUtf8(std::string("a") + text), 1U) << text;
}
