#include <gtest/gtest.h>
#include <kiv/StringUtilities.h>

#include <string>
#include <vector>

using namespace kiv::StringUtilities;
using Pieces = std::vector<std::string>;

TEST(StringUtilities, replaceSubstring) {
    struct Row {
        const char *text, *from, *to, *result;
    };
    for (const auto& [text, from, to, result] :
         {Row{"a,b,,c", ",", "\\,", "a\\,b\\,\\,c"}, Row{"", ",", "x", ""},
          Row{"abc", "", "x", "abc"}, Row{"aaa", "aa", "b", "ba"},
          Row{"abab", "ab", "abab", "abababab"}, Row{"a,", ",", "", "a"}})
        EXPECT_EQ(replaceSubstring(text, from, to), result) << text;
}

TEST(StringUtilities, removeWhitespaceKeepsInnerBlanksSimplifyWhitespaceMakesThemOneSpace) {
    struct Row {
        const char *text, *trimmed, *simplified;
    };
    for (const auto& [text, trimmed, simplified] :
         {Row{"", "", ""}, Row{" \t\n\v\f\r", "", ""}, Row{"a", "a", "a"},
          Row{"\r\v a \f\n", "a", "a"}, Row{"my   name", "my   name", "my name"},
          Row{" a\tb ", "a\tb", "a b"}, Row{"a \n b  c", "a \n b  c", "a b c"},
          Row{"\xA0 a\x85", "\xA0 a\x85", "\xA0 a\x85"}}) {
        EXPECT_EQ(removeWhitespace(text), trimmed) << text;
        EXPECT_EQ(simplifyWhitespace(text), simplified) << text;
    }
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
    const std::vector<std::pair<const char*, Pieces>> rows = {
        {"", {}},
        {"\n", {""}},
        {"a", {"a"}},
        {"a\nb", {"a", "b"}},
        {"a\n\nb\n", {"a", "", "b"}},
        {"\na\r\n\n", {"", "a\r", ""}},
    };
    for (const auto& [text, pieces] : rows) EXPECT_EQ(stringToVector(text, '\n'), pieces) << text;
    EXPECT_EQ(stringToVector("a\nb;c", ';'), (Pieces{"a\nb", "c"}));
}

TEST(StringUtilities, vectorToOneLineStringDropsTheIndentationOfLaterPieces) {
    const std::vector<std::pair<Pieces, const char*>> rows = {
        {{}, ""},
        {{"  a "}, "  a "},
        {{"  label = abc", "def"}, "  label = abcdef"},
        {{"a ", " \t b ", "", "  ", "c"}, "a b c"},
    };
    for (const auto& [pieces, line] : rows) EXPECT_EQ(vectorToOneLineString(pieces), line);
}
