#include <kiv/KDXFormatting.h>

#include "support/Failure.h"
#include "support/Text.h"

using kiv::KDXFormatting::formatKDX;
using kiv::KDXFormatting::Style;

namespace {

void expectFormatted(const std::vector<Case>& cases, const Style& style = {}) {
    for (const auto& [input, result] : cases) {
        EXPECT_EQ(formatKDX(unpacked(input), style), unpacked(result)) << input;
        EXPECT_EQ(formatKDX(unpacked(result), style), unpacked(result)) << input;
    }
}

TEST(FormatKDX, layout) {
    expectFormatted({
        {"", ""},
        {"A:|B:b|x=1|END|END", "A:|  B: b|    x = 1|  END|END|"},
        {"\t A  b  :  c  d|", "A  b: c  d|"},
        {"=5|x=|=|x=#c|x =\t# c|:n|:", "= 5|x =|=|x =#c|x =\t# c|: n|  :|"},
        {"x  =  1 \t # c  |", "x = 1 \t # c|"},
        {"END|A:|END # c|END|x=1", "END|A:|END # c|END|x = 1|"},
        // What stands in an object is indented, whatever it is.
        {"# a|A:|# b|> run |!v # \t|$w|# c|END|# d",
         "# a|A:|  # b|  > run|  !v #|  $w|  # c|END|# d|"},
        {"|| |x=1||\t||y=1|||", "x = 1||y = 1|"},
        {"A:|||END||", "A:||END|"},
        {"| ||", ""},
    });
}

TEST(FormatKDX, linesEndAsTheyDid) {
    expectFormatted({
        {"A:^|x=1 ^^|^|y=1|END", "A:^|  x = 1^|^|  y = 1|END|"},
        {"A:^|END", "A:^|END^|"},
        {"\xEF\xBB\xBF|:|x=1", "\xEF\xBB\xBF:|  x = 1|"},
    });
}

// Where a backslash stands, blanks may decide what a line says.
TEST(FormatKDX, backslashes) {
    expectFormatted({
        {"A:|x=1,\\|2,\\|   3  |END", "A:|  x = 1,\\|    2,\\|    3|END|"},
        {"A:|\\|x=1|END", "A:|  \\|    x=1|END|"},
        {"A\\|\\|: x|END", "A\\|  \\|  : x|END|"},
        {"A:|EN\\|D|x=1", "A:|EN\\|  D|x = 1|"},
        {"A:|x=1 #\\|B:|y=1|END", "A:|  x = 1 #\\|    B:|  y = 1|END|"},
        {"x=a\\#b # c|y=1", "x = a\\#b # c|y = 1|"},
        {"q=C:\\d\\ # c|y=1", "q = C:\\d\\ # c|y = 1|"},
        {"x=\\| 1 # c\\ |y=1", "x = \\|  1 # c\\ |y = 1|"},
        // behind one, blanks stay
        {"x=a\\| b\\ |y=1", "x = a\\|  b\\ |y = 1|"},
        {"x=a\\\t|y=1", "x = a\\\t|y = 1|"},
        {" # C:\\d\\\t|y=1", "# C:\\d\\\t|y = 1|"},
        {"x=a\\^|y=1^|", "x = a\\^|y = 1^|"},
        {"x=a\\\t# c\\\t|y=1", "x = a\\\t# c\\\t|y = 1|"},
        {"!a\\\t ^|y=1|", "!a\\\t ^|y = 1|"},
        // a blank line may belong to what stands before it
        {"x=a\\||y=1", "x = a\\||y = 1|"},
        {"x=a\\| \t||", "x = a\\||"},
        // an open end stays as it is
        {"A:|x=a\\", "A:|x=a\\"},
        {"A:| x=a\\|", "A:| x=a\\|"},
        {"A:| x=a\\\t", "A:|  x = a\\\t|"},
    });
}

TEST(FormatKDX, styles) {
    Style style;
    style.indentWidth = 4;
    style.deepestLevel = 1;
    style.blankLines = 0;
    style.separators = Style::Separators::tight;
    expectFormatted({{"A: a||B: |x = 1|= 2|y = # c|z = \\|1",
                      "A:a|    B:|    x=1|    =2|    y= # c|    z=\\|        1|"}},
                    style);
    style.separators = Style::Separators::unchanged;
    expectFormatted({{"A :a||x= 1  ", "A :a|    x= 1|"}}, style);
}

TEST(FormatKDX, endComments) {
    Style style;
    style.endComments = Style::EndComments::added;
    expectFormatted({{"A:a  b|B:|END|END #|END", "A: a  b|  B:|  END # B:|END #|END|"},
                     {"C:C:\\d|END|D:C:\\|^|END|", "C: C:\\d|END # C:C:\\d|D: C:\\|^|END # D:C:|"},
                     {"S: C:\\ #|EN\\|D|A: b\\|c|END", "S: C:\\ #|EN\\|  D|A: b\\|  c|END # A:bc|"},
                     {"O:|S:|EN\\|D|END", "O:|  S:|  EN\\|    D|END # O:|"},
                     {"S: C:\\ #|END", "S: C:\\ #|END|"}},
                    style);
    style.endComments = Style::EndComments::removed;
    expectFormatted({{"A:a|END  #A:a|END # A:a|", "A: a|END|END # A:a|"},
                     {"&replace M: m|END # M:m|A: A|END # A:", "&replace M: m|END|A: A|END|"},
                     {"A:a\\b|END # A:a\\b|A:|END # B:", "A: a\\b|END|A:|END # B:|"}},
                    style);
}

TEST(FormatKDX, refusesWhatIsNoKDX) {
    const std::string where = "KDXFormatting::formatKDX (4): Unknown KDX syntax in line ";
    const std::string awaited = ", where ':' or '=' is awaited:\n";
    const std::string longLine(81, 'n');
    for (const auto& [text, message] : std::vector<std::pair<std::string, std::string>>{
             {"x=1\n  gain -> 3 # c", "2, column 8" + awaited + "gain -> 3."},
             {"A:\n x\\\n  y\nz", "3, column 4" + awaited + "xy."},
             {"x=1\n\xEF\xBB\xBFZ\\\n:", "2, column 1" + awaited + "\xEF\xBB\xBFZ:."},
             {longLine.substr(4) + "\xC3\xA4\xC3\xA4",
              "1, column 78" + awaited + longLine.substr(4) + "...."},
             {longLine, "1, column 82" + awaited + longLine.substr(4) + "...."}})
        EXPECT_EQ(failureOf<kiv::data::invalid>([&text = text] { formatKDX(text); }),
                  where + message);
}

TEST(FormatKDX, deepAndLong) {
    const std::size_t levels = 100000;
    std::string nested;
    for (std::size_t i = 0; i < levels; ++i) nested += "A:\n";
    EXPECT_EQ(formatKDX(nested).size(), nested.size() + 64 * 63 + 128 * (levels - 64));
    EXPECT_EQ(formatKDX(std::string(1000000, '\n')), "");
    std::string longLine = "x = 1\\\n";
    for (std::size_t i = 0; i < 1000000; ++i) longLine += "  2\\\n";
    EXPECT_EQ(formatKDX(' ' + longLine + '\n'), longLine + '\n');
}

}  // namespace
