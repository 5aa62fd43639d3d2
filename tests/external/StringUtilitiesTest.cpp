#include <gtest/gtest.h>
#include <kiv/StringUtilities.h>

#include <string>
#include <vector>

using namespace kiv::StringUtilities;
using Pieces = std::vector<std::string>;

TEST(StringUtilities, replaceSubstring) {
    EXPECT_EQ(replaceSubstring("a,b,,c", ",", "\\,"), "a\\,b\\,\\,c");
    EXPECT_EQ(replaceSubstring("abc", "", "x"), "abc");
    EXPECT_EQ(replaceSubstring("aaa", "aa", "b"), "ba");
    EXPECT_EQ(replaceSubstring("abab", "ab", "abab"), "abababab");
}

TEST(StringUtilities, removeWhitespaceKeepsInnerBlanksSimplifyWhitespaceMakesThemOneSpace) {
    struct Row {
        std::string text, trimmed, simplified;
    };
    for (const auto& [text, trimmed, simplified] :
         {Row{" \t\n\v\f\r", "", ""}, Row{"\r\v a \f\n", "a", "a"}, Row{" a\tb ", "a\tb", "a b"},
          Row{"a \n b  c", "a \n b  c", "a b c"}, Row{"\xA0 a\x85", "\xA0 a\x85", "\xA0 a\x85"}}) {
        EXPECT_EQ(removeWhitespace(text), trimmed) << text;
        EXPECT_EQ(simplifyWhitespace(text), simplified) << text;
    }
}

TEST(StringUtilities, removeFromEnd) {
    const auto rest = [](std::string text, const std::string& suffix) {
        const bool removed = removeFromEnd(text, suffix);
        return text + (removed ? ", removed" : "");
    };
    EXPECT_EQ(rest("a\\\\", "\\"), "a\\, removed");
    EXPECT_EQ(rest("\\", "\\"), ", removed");
    EXPECT_EQ(rest("a", "\\"), "a");
    EXPECT_EQ(rest("b", "ab"), "b");
    EXPECT_EQ(rest("a", ""), "a");
}

TEST(StringUtilities, stringToVector) {
    EXPECT_EQ(stringToVector("", '\n'), Pieces());
    EXPECT_EQ(stringToVector("a\nb;c", ';'), (Pieces{"a\nb", "c"}));
    EXPECT_EQ(stringToVector("\na\r\n\nb\n\n", '\n'), (Pieces{"", "a\r", "", "b", ""}));
}

TEST(StringUtilities, vectorToOneLineStringDropsTheIndentationOfLaterPieces) {
    EXPECT_EQ(vectorToOneLineString({}), "");
    EXPECT_EQ(vectorToOneLineString({"  label = a ", " \t b \t", "", "  ", "c"}),
              "  label = a b \tc");
}
