#include <kiv/KDXFormatting.h>

#include "support/Text.h"

using kiv::KDXFormatting::indentKDX;
using kiv::KDXFormatting::removeComment;

namespace {

const std::vector<Case> kIndented = {
    {"", ""},
    {"A:|B:|END|END", "A:|  B:|  END|END"},
    {"  END|\tEND # x|x=1|A:|END|END|B:", "END|END # x|x=1|A:|END|END|B:"},
    {"A:|  >run # c |\t$v|! v|  #c |  odd - ", "A:|>run # c |$v|! v|#c |  odd - "},
    {"|  |\t\r|x=1", "|||x=1"},
    {"A:\r|x=1 # c  |END\r", "A:\r|  x=1 # c  |END\r"},
    {"A:|\t x=1", "A:|  x=1"},
    // Continuations of a line whose kind its first piece tells.
    {"A:|x = 1, \\|2, \\|  3|y = 1|END", "A:|  x = 1, \\|    2, \\|    3|  y = 1|END"},
    {"Sample: \\|  s1|END", "Sample: \\|    s1|END"},
    {"A:|x = \\|  # c", "A:|  x = \\|  # c"},
    {"A:|x = \\|    \\y", "A:|  x = \\|  \\y"},
    {"A:|x = \\||y=1", "A:|  x = \\||  y=1"},
    {"A:|x = \\|   |y=1", "A:|  x = \\|  |  y=1"},
    {"A:|>go \\|    now \\|then|x=1", "A:|>go \\|  now \\|then|  x=1"},
    {"A:| $v\\|  w|!v # c\\|   w", "A:|$v\\|  w|!v # c\\|  w"},
    {"END\\|  x", "END\\|x"},  // no END: a first piece of some name
    // what the first line says without its comment decides whether it is continued
    {"A:|x = 1 # c \\|y=1", "A:|  x = 1 # c \\|  y=1"},
    {"A:|x = 1 \\ \t|y=1", "A:|  x = 1 \\ \t|    y=1"},
    {"A:|x = a\\#b|y=1|z=1", "A:|  x = a\\#b|    y=1|  z=1"},
    // of a later one the very last character does
    {"A:|x = 1 \\|2 \\ |y=1", "A:|  x = 1 \\|    2 \\ |  y=1"},
    {"A:|x = 1 \\|2 # c\\|3|y=1", "A:|  x = 1 \\|    2 # c\\|    3|  y=1"},
    // Continuations of a line whose kind is open.
    {"Sample \\|  : s1|x=1|END", "Sample \\|  : s1|  x=1|END"},
    {"A:|B \\|      : s1|x=1", "A:|  B \\|  : s1|    x=1"},
    {"A:|B \\|: s1|x=1", "A:|  B \\|: s1|    x=1"},
    {"A:|ga\\|in = 1 \\|2", "A:|  ga\\|    in = 1 \\|    2"},
    {"A:|a\\|      b\\|c\\|#x", "A:|  a\\|  b\\|c\\|#x"},
    {"A:|a\\|      #x|b", "A:|  a\\|  #x|  b"},
    // never more than a comment, and never decided
    {"A:|a - \\|b: \\|c", "A:|  a - \\|b: \\|c"},
    {"\\|  # c|  x=1", "  # c|x=1"},
    // END: whole, cut in two, and spoiled
    {"A:|B:|END \\|b = 1", "A:|  B:|    END \\|      b = 1"},
    {"A:|B:|EN\\|D|x=1", "A:|  B:|    EN\\|  D|  x=1"},
    {"A:|B:|EN\\|  D|x", "A:|  B:|    EN\\|    D|    x"},
    {"A:|END|EN\\| D\\| #x", "A:|END|EN\\|D\\|  #x"},  // indented again, the last line moves
    {"A:|B:|END \\||x=1", "A:|  B:|    END \\|  |  x=1"},
    {"A:|B:|END\t\\||x=1", "A:|  B:|    END\t\\|  |  x=1"},
    {"A:|B:|END\t\\|  # c|x=1", "A:|  B:|    END\t\\|  # c|  x=1"},
    {"A:|B:|END\t\\|x|x=1", "A:|  B:|    END\t\\|x|    x=1"},
    // left out
    {"a=1|  \\ x|b=2", "a=1|b=2"},
    {"Sample \\||: s1", "Sample \\|: s1"},
    {"Sample \\|  \\|: s1", "Sample \\|: s1"},
    {"\\|\\|\\", ""},
    {"# c\\|a\\||b=1", "# c\\|a\\|b=1"},  // the comment's backslash continues nothing
};

}  // namespace

TEST(RemoveComment, cutsAtTheFirstHash) {
    for (const auto& [line, rest] :
         {Case{"gain = 10 # dB", "gain = 10"}, Case{"  gain = 10\t", "gain = 10"},
          Case{" # only", ""}, Case{" \t\r", ""}, Case{"x = a\\#b # c", "x = a\\"},
          Case{">go #1#2", ">go"}, Case{"  ! a # b \r", "! a # b"}, Case{"$ a # b ", "$ a # b"},
          Case{"#! a", ""}})
        EXPECT_EQ(removeComment(line), rest) << line;
}

TEST(IndentKDX, indentsByNestingAndContinuation) {
    for (const auto& [before, after] : kIndented)
        EXPECT_EQ(joined(indentKDX(lines(before))), after) << before;
}
