#include <gtest/gtest.h>
#include <kiv/StringUtilities.h>

#include <string>
#include <vector>

#include "support/Text.h"

using namespace kiv::StringUtilities;
using Pieces = std::vector<std::string>;

TEST(StringUtilities, replaceSubstring) {
    struct Row {
        const char *text, *from, *to, *result;
    };
    for (const auto& [text, from, to, result] :
         {Row{"a,b,,c", ",", "\\,", "a\\,b\\,\\,c"}, Row{"abc", "", "x", "abc"},
          Row{"aaa", "aa", "b", "ba"}, Row{"abab", "ab", "abab", "abababab"},
          Row{"a,", ",", "", "a"}})
        EXPECT_EQ(replaceSubstring(text, from, to), result) << text;
}

TEST(StringUtilities, removeWhitespaceKeepsInnerBlanksSimplifyWhitespaceMakesThemOneSpace) {
    for (const auto& [text, trimmed] :
         {Case{"", ""}, Case{" \t\n\v\f\r", ""}, Case{"\r\v a \f\n", "a"}, Case{" a\tb ", "a\tb"},
          Case{"a \n b  c", "a \n b  c"}, Case{"\xA0 a\x85", "\xA0 a\x85"}})
        EXPECT_EQ(removeWhitespace(text), trimmed) << text;
    for (const auto& [text, simplified] :
         {Case{"", ""}, Case{" \t\n\v\f\r", ""}, Case{"\r\v a \f\n", "a"}, Case{" a\tb ", "a b"},
          Case{"a \n b  c", "a b c"}, Case{"\xA0 a\x85", "\xA0 a\x85"}})
        EXPECT_EQ(simplifyWhitespace(text), simplified) << text;
    const std::string withZero("\0 \0", 3);
    EXPECT_EQ(removeWhitespace(withZero), withZero);
}

TEST(StringUtilities, removeFromEnd) {
    struct Row {
        const char *text, *suffix, *rest;
        bool cut;
    };
    for (const auto& [text, suffix, rest, cut] :
         {Row{"a\\\\", "\\", "a\\", true}, Row{"\\", "\\", "", true}, Row{"a", "\\", "a", false},
          Row{"", "\\", "", false}, Row{"b", "ab", "b", false}, Row{"a", "", "a", false}}) {
        std::string changed = text;
        EXPECT_EQ(removeFromEnd(changed, suffix), cut) << text;
        EXPECT_EQ(changed, rest) << text;
    }
}

TEST(StringUtilities, stringToVector) {
    EXPECT_EQ(stringToVector("", '\n'), Pieces());
    EXPECT_EQ(stringToVector("a\nb;c", ';'), (Pieces{"a\nb", "c"}));
    EXPECT_EQ(stringToVector("\na\r\n\nb", '\n'), (Pieces{"", "a\r", "", "b"}));
    EXPECT_EQ(stringToVector("a\n\n", '\n'), (Pieces{"a", ""}));
}

TEST(StringUtilities, vectorToOneLineStringDropsTheIndentationOfLaterPieces) {
    EXPECT_EQ(vectorToOneLineString({}), "");
    EXPECT_EQ(vectorToOneLineString({"  label = a ", " \t b \t", "", "  ", "c"}),
              "  label = a b \tc");
}
