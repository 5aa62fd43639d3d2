#include <kiv/KDXCheck.h>
#include <kiv/KDXReader.h>

#include <array>

#include "support/Failure.h"
#include "support/Text.h"

namespace {

using kiv::KDXCheck::Options;
using kiv::KDXCheck::Problem;
using kiv::KDXCheck::Severity;

/// "2:1-2:4 error rule @1:1 !": the place, the other one, '!' for a safe fix, '?' for another.
std::string textOf(const Problem& problem) {
    return placeText(problem.begin) + '-' + placeText(problem.end) + ' ' +
           (problem.severity == Severity::error ? "error " : "") + std::string(problem.rule) +
           (problem.reference ? " @" + placeText(*problem.reference) : "") +
           (problem.fix ? problem.fix->safe ? " !" : " ?" : "");
}

std::string problemsOf(const std::string& text, const Options& options = {}) {
    std::string problems;
    for (const Problem& problem : kiv::KDXCheck::check(text, options).problems)
        problems += (problems.empty() ? "" : ", ") + textOf(problem);
    return problems;
}

struct Row {
    std::string text;
    std::string problems;
};

std::string manyParameters() {
    std::string text = "A:\n";
    for (int i = 0; i < 50; ++i) text += "x" + std::to_string(i) + " = 1\n";
    return text;
}

const std::vector<Row> kRows = {
    {"", ""},
    {"A: s1 # c|  x = 1|END # A:s1|> go|!v||", ""},
    {"A:| a -> 3|END", "2:4-2:5 error unknown-syntax"},
    {"A:| lone # x|END", "2:6-2:6 error unknown-syntax"},
    {"A:| x\\|  y\\|   z-|END", "4:5-4:6 error unknown-syntax"},
    {"A:|eNd # c||END", "2:1-2:4 error end-case ?"},
    {"A:|END A|END", "2:5-2:6 error text-behind-end ?"},
    {"A:|END %|END", "2:5-2:6 error text-behind-end ?"},
    {"ENDX", "1:5-1:5 error unknown-syntax"},
    {" x = 1 # c|A:|END|=|", "1:2-1:7 error no-object, 4:1-4:2 error no-object"},
    {"A:|END| END # A:|END", "3:2-3:5 error unexpected-end !, 4:1-4:4 error unexpected-end !"},
    {"E\\|ND", "1:1-2:3 error unexpected-end, 1:1-2:3 cut-end"},
    // Objects that are not closed, and ENDs that stand elsewhere.
    {"A:|  B: b|", "1:1-1:3 never-closed, 2:3-2:7 never-closed ?"},
    // The END that is missing is the inner one, whichever object is open at the end.
    {"A:|  B:|    x = 1|END|", "1:1-1:3 never-closed ?, 4:1-4:4 indentation @2:3"},
    {"A:|  B:|    x = 1|  C:|  END|END|", "1:1-1:3 never-closed ?, 4:3-4:5 indentation @2:3"},
    {"A:|  B:|  C:|  END|END|", "1:1-1:3 never-closed ?, 5:1-5:4 indentation @2:3"},
    {"A:|  B:|    C:|      x=1|D:|END|",
     "1:1-1:3 never-closed, 2:3-2:5 never-closed, 3:5-3:7 never-closed ?, 5:1-5:3 indentation "
     "@3:5, 5:1-5:3 indentation @2:3, 5:1-5:3 indentation @1:1"},
    {"A:|  B:|  END|  END|END|", "4:3-4:6 indentation @1:1, 5:1-5:4 error unexpected-end !"},
    {"  A:|x=1|  END|", "2:1-2:4 indentation @1:3"},
    {"A:|B:|x=1|END|END|", ""},
    {"A:|  B:|  x=1|  END|END|", ""},
    {"A:|  x=1|  END|B:|    y=2|  z=3| END", ""},
    {"A:|\tB:|        x=1|\tEND|END", ""},
    {"A:|\tB:|\t  x=1|\ty=2|\tEND|END", "4:2-4:5 indentation @2:2"},
    {"A:|  x = 1, \\|2|y = 1 \\||END", ""},
    {"A:|&replace   B: b|    x=1|  END # B:b|END", ""},
    {"A:|  x=1|&replace B: b|  END|END", ""},
    {"A:|  B:|  END|  END|C:|END|", "4:3-4:6 indentation @1:1"},
    {"A:|  B:|    x=1|   END|   END|", ""},
    // ENDs that say otherwise.
    {"B:|END|A: a|END # B: b|", "4:5-4:11 end-comment @3:1 ?"},
    {"A: a|END #A:b|B: b c|END # A: a|A: x|END # B:b  c|B:|END # B:b c.",
     "2:5-2:9 end-comment @1:1 ?, 4:5-4:11 end-comment @3:1 ?, 6:5-6:13 end-comment @5:1 ?"},
    {"A: b:c|END # Axb:c|Axb: c|END", "2:5-2:12 end-comment @1:1 ?"},
    {"A:|B:|END # A:|", "1:1-1:3 never-closed ?, 3:5-3:9 end-comment @2:1 ?"},
    {"A: a\\ #|END # A:|", "2:5-2:9 end-comment @1:1"},
    // Where a backslash is in the way, there is no fix.
    {"A:|END # A:s1 \\ ## c\\\t", ""},
    {"A: a|END # A:\\x\\\t", ""},
    {"A: a|END # A:\\x", "2:5-2:11 end-comment @1:1"},
    {"A: a|END #A : a  |A:|END # A:A|&replace M: M|END # M:M|B:|END #B:", ""},
    {"A: a|END # closes it|B:|END # see: C|C:|END # http://x|D:|END # a-b:c", ""},
    {"A: a|END # A: closes it|A: b|END # A:a, closes it|A: c|END # A:c.", ""},
    {"A: a|END a: 1|END|END|B:| END = 2| ENDX = 3|END|",
     "2:1-2:9 end-as-name, 6:2-6:9 end-as-name"},
    {"A:|EN\\|D|B:|END \\|# B:|C:|END # a\\||", "2:1-3:2 cut-end, 5:1-5:4 cut-end"},
    // Names.
    {"A:| x=1|END|A: A| x=2|END", "4:1-4:5 repeated-object @1:1, 5:2-5:5 repeated-parameter @2:2"},
    {"A:| B: b|  x  y=1| END|END|A:| B: b|  x y=2| END| x=1|END|B: b|END",
     "6:1-6:3 repeated-object @1:1, 7:2-7:6 repeated-object @2:2, 8:3-8:8 repeated-parameter @3:3"},
    {manyParameters() + "x9 = 1|x49 = 1|END|B:|x49 = 1|END|",
     "52:1-52:7 repeated-parameter @11:1, 53:1-53:8 repeated-parameter @51:1"},
    {"A: a/b|x = a/b|END|", "1:5-1:6 slash-in-name"},
    // Hashes and backslashes.
    {"A: a#1|x = a#b|y = # c|z=# c|END",
     "1:5-1:7 hash-in-value !, 2:6-2:8 hash-in-value !, 3:5-3:8 hash-in-value, 4:3-4:6 "
     "hash-in-value"},
    {"A:# a|x = a\\#b|y = a\t#c|z =|> a#b|END#A:", ""},
    {"A:|x = 1 # c \\| 2|y = 1 # c \\||z = 1 \\| 2 # c|END", "2:7-2:8 swallowed-continuation"},
    {"A:|x = 1 # c\\|y = 2|END", "2:7-2:8 swallowed-continuation"},
    {"# C:\\|A:|END|", "1:1-1:2 swallowed-continuation, 3:1-3:4 error unexpected-end !"},
    {"A:|x = C:\\|  y = 1|END", "2:7-2:8 swallowed-statement @3:3 ?"},
    {"A:|x = C:\\#\\|y = 1\\|z: 1|END",
     "2:9-2:10 swallowed-statement @3:1, 3:6-3:7 swallowed-statement @4:1"},
    {"! \\|A:|! \\|a|> a\\|END|",
     "1:3-1:4 swallowed-statement @2:1, 5:4-5:5 swallowed-statement @6:1 ?"},
    {"A:|x = a \\|y = 1|z = a,\\|y = 1|u = a\\|b|END", ""},
    {"A:|x = a\\|> b|# a\\||END|ENDX\\||",
     "2:6-2:7 swallowed-statement @3:1 ?, 7:5-7:5 error unknown-syntax"},
    {"A:|  \\|  x = 1, \\|\\|2|END", "2:3-2:4 lone-backslash, 4:1-4:2 lone-backslash"},
    {"A:|x = 1, \\| \\ |2=3|END", ""},
    {"A:|END|\\", "3:1-3:2 lone-backslash"},
    {"A:|x = C:\\|\\| y = 1|END", "2:7-2:8 swallowed-statement @4:2 ?, 3:1-3:2 lone-backslash"},
    {"! a\\|\\|A:|END|! a\\|\\",
     "1:4-1:5 swallowed-statement @3:1, 2:1-2:2 lone-backslash, 4:1-4:4 error unexpected-end !, "
     "6:1-6:2 lone-backslash"},
    {"A:| x = 1 \\^||END", "2:8-2:10 backslash-return ?"},
    {"A:| x = 1 # \\^||END", ""},
    // Bytes.
    {"\xEF\xBB\xBF-", "1:1-1:1 byte-order-mark !, 1:1-1:2 error unknown-syntax"},
    {"A:|x = \xC3\xA4 \xE9|# \xFF|END", "2:8-2:9 no-utf8, 3:3-3:4 no-utf8"},
    {std::string("> a\0\0b|", 7), "1:4-1:5 nul-byte"},
    // What comments ignore.
    {"A:|x = # kdx: ignore hash-in-value|y = # kdx:ignore no-utf8 , hash-in-value|END", ""},
    {"A:|# kdx: ignore repeated-parameter, hash-in-value||# c|x=# 1|x=#2|END",
     "6:1-6:3 repeated-parameter @5:1, 6:3-6:5 hash-in-value"},
    {"A:|# kdx 2: ignore hash-in-value|x=#|END", "3:3-3:4 hash-in-value"},
    {"# kdx: ignore never-closed|A:|B: # kdx: ignore no-utf8|", "3:1-3:3 never-closed ?"},
    {"- # kdx: ignore unknown-syntax|A:|END # kdx:ignore", "1:1-1:2 error unknown-syntax"},
};

}  // namespace

TEST(KDXCheck, findsAllThatIsWrong) {
    for (const Row& row : kRows)
        EXPECT_EQ(problemsOf(unpacked(row.text)), row.problems) << row.text;
}

TEST(KDXCheck, takesOptions) {
    const std::string text = "A:\n A:\n  x = #\n END\nx = #\nEND\nEND\nEND\nEND\n";
    Options options;
    options.maxDepth = 1;
    options.warnings = false;
    EXPECT_EQ(problemsOf(text, options),
              "2:2-2:4 error too-deep, 7:1-7:4 error unexpected-end !, 8:1-8:4 error "
              "unexpected-end !, 9:1-9:4 error unexpected-end !");
    options = {};
    options.rules = {"hash-in-value", "unexpected-end"};
    options.maxProblems = 2;
    EXPECT_EQ(problemsOf(text, options),
              "3:7-3:8 hash-in-value, 5:5-5:6 hash-in-value, 7:1-7:4 error unexpected-end !, "
              "8:1-8:4 error unexpected-end !");
    const auto report = kiv::KDXCheck::check(text, options);
    EXPECT_EQ(std::pair(report.errors, report.warnings), std::pair(std::size_t{3}, std::size_t{2}));
    options.rules = {};
    options.maxProblems = 1;
    EXPECT_EQ(problemsOf("A:\nx = #\ny = #\nz = #\nEND\nB:\nu = #", options),
              "2:5-2:6 hash-in-value");
    EXPECT_EQ(problemsOf("A:\nx = #\ny = #\n", options), "1:1-1:3 never-closed ?");
    options.rules = {"no-rule"};
    EXPECT_EQ(failureOf<kiv::data::invalid>([&] { (void)kiv::KDXCheck::check(text, options); }),
              "KDXCheck::check (4): There is no rule with the name no-rule.");
}

TEST(KDXCheck, saysWhatIsWrongAndHowToMendIt) {
    std::string longName;
    while (longName.size() < 90) longName += "\xC3\xA4";
    for (const auto& [text, message, mended] : std::vector<std::array<std::string, 3>>{
             {"A: \x1b[1m\nB:\nEND", "object 'A: ?[1m' is never closed: its END is missing",
              "A: \x1b[1m\nB:\nEND\nEND\n"},
             {"A: \x1b\xC2\x9B\nEND # A:",
              "the comment of this END names another object, but it closes object 'A: ?\?' of line "
              "1",
              "A: \x1b\xC2\x9B\nEND # A:\x1b\xC2\x9B"},
             {"AA: " + longName + "\nEND # AA:",
              "the comment of this END names another object, but it closes object 'AA: " +
                  longName.substr(0, 72) + "...' of line 1",
              "AA: " + longName + "\nEND # AA:" + longName},
             {"A:\r\n  x=a\\", "object 'A' is never closed: its END is missing",
              "A:\r\n  x=a\\\n\nEND\r\n"},
             {"A:\nx=1\ry", "object 'A' is never closed: its END is missing", "A:\nx=1\ry\nEND\n"},
             {"A:\r\nx=1", "object 'A' is never closed: its END is missing",
              "A:\r\nx=1\r\nEND\r\n"},
         }) {
        const auto problems = kiv::KDXCheck::check(text).problems;
        EXPECT_EQ(problems.front().message, message);
        EXPECT_EQ(kiv::applyEdits(text, problems.front().fix->edits), mended);
    }
}

/// Every rule has a section "### `name`" in the documentation, with its severity and sentence, and
/// a text of which it is the only problem.
TEST(KDXCheck, hasEveryRuleDocumented) {
    const std::string page = readFile(KIV_PROJECT "/docs/rules.md");
    std::size_t at = 0;
    for (const kiv::KDXCheck::Rule& rule : kiv::KDXCheck::rules()) {
        const std::string name(rule.name);
        const std::string head = "### `" + name + "`\n\n" +
                                 (rule.severity == Severity::error ? "Error. " : "Warning. ") +
                                 std::string(rule.explanation) + ".";
        at = page.find(head, at);
        ASSERT_NE(at, std::string::npos) << head;
        const std::size_t begin = page.find("```kdx\n", at) + 7;
        std::string text = page.substr(begin, page.find("```", begin) - begin);
        for (const auto& [shown, meant] :
             std::vector<std::pair<std::string, std::string>>{{"<CR>", "\r"},
                                                              {"<BOM>", "\xEF\xBB\xBF"},
                                                              {"<NUL>", std::string(1, '\0')},
                                                              {"<E9>", "\xE9"}})
            if (const auto found = text.find(shown); found != std::string::npos)
                text.replace(found, shown.size(), meant);
        Options options;
        options.maxDepth = 3;
        const auto problems = kiv::KDXCheck::check(text, options).problems;
        ASSERT_EQ(problems.size(), 1U) << name;
        EXPECT_EQ(problems.front().rule, rule.name);
        kiv::KDXReader reader(text);
        const auto isAbove = [&] {
            return reader.placeInSource(reader.source().size()).offset <=
                   problems.front().begin.offset;
        };
        while (reader.next() && isAbove()) continue;
        EXPECT_EQ(reader.kind() == kiv::MiniKDXParser::lineUnrecognised, rule.isSyntax) << name;
    }
}

TEST(KDXCheck, showsTextsInMessagesForWhatTheyAre) {
    for (const std::string name : {"\x01", "\x7F", "\xC2\x9B", "\xE2\x80\xAE", "\xF0\x9F\x98\x80",
                                   "\xFF", "\xC2", "\xC3\xA4"}) {
        std::string text = "A: ";
        for (int i = 0; i < 100; ++i) text += name;
        text += "\nEND\n";
        for (const auto& problem : kiv::KDXCheck::check(text + text).problems) {
            EXPECT_LT(problem.message.size(), 200U) << name;
            EXPECT_TRUE(kiv::findNoUtf8(name) == 0 ||
                        kiv::findNoUtf8(problem.message) == std::string::npos);
            for (const char c : problem.message) EXPECT_GE(static_cast<unsigned char>(c), 0x20U);
        }
    }
}

TEST(KDXCheck, describesWhatCannotStandInALine) {
    using Row = std::pair<const char*, const char*>;
    for (const auto& [text, described] :
         {Row("-", "'-'"), Row("\xC3\xA4", "'\xC3\xA4'"), Row("\x01", "the byte 0x01"),
          Row("\xFF", "the byte 0xFF"), Row("\xC2\x85", "the character U+0085"),
          Row("\xE2\x80\xAE", "the character U+202E")}) {
        const std::string message = kiv::KDXCheck::check(text).problems.front().message;
        EXPECT_EQ(message.find(std::string("unknown syntax: ") + described + " cannot"), 0U);
    }
}
