#include <gtest/gtest.h>
#include <kiv/Error.h>
#include <kiv/KDXCheck.h>

#include <array>
#include <string>
#include <utility>
#include <vector>

#include "support/Failure.h"
#include "support/Text.h"

namespace {

using kiv::KDXCheck::Options;
using kiv::KDXCheck::Problem;
using kiv::KDXCheck::Severity;

std::string textOf(const kiv::KDXPlace& place) {
    return std::to_string(place.line) + ':' + std::to_string(place.column);
}

/// "2:1-2:4 error rule @1:1 !": the place, the other one, '!' for a safe fix, '?' for another.
std::string textOf(const Problem& problem) {
    return textOf(problem.begin) + '-' + textOf(problem.end) + ' ' +
           (problem.severity == Severity::error ? "error " : "") + std::string(problem.rule) +
           (problem.reference ? " @" + textOf(*problem.reference) : "") +
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

void expectAll(const std::vector<Row>& rows) {
    for (const Row& row : rows)
        EXPECT_EQ(problemsOf(row.text), row.problems) << testing::PrintToString(row.text);
}

TEST(KDXCheck, FindsErrors) {
    expectAll({
        {"", ""},
        {"A: s1 # c\n  x = 1\nEND # A:s1\n> go\n!v\n\n", ""},
        {"A:\n a -> 3\nEND", "2:4-2:5 error unknown-syntax"},
        {"A:\n lone # x\nEND", "2:6-2:6 error unknown-syntax"},
        {"A:\n x\\\n  y\\\n   z-\nEND", "4:5-4:6 error unknown-syntax"},
        {"A:\neNd # c\n\nEND", "2:1-2:4 error end-case ?"},
        {"A:\nEND A\nEND", "2:5-2:6 error text-behind-end ?"},
        {"ENDX", "1:5-1:5 error unknown-syntax"},
        {" x = 1 # c\nA:\nEND\n=\n", "1:2-1:7 error no-object, 4:1-4:2 error no-object"},
        {"A:\nEND\n END # A:\nEND",
         "3:2-3:5 error unexpected-end !, 4:1-4:4 error "
         "unexpected-end !"},
        {"E\\\nND", "1:1-2:3 error unexpected-end, 1:1-2:3 cut-end"},
    });
}

TEST(KDXCheck, FindsWhatIsMissingOrElsewhere) {
    expectAll({
        {"A:\n  B: b\n", "1:1-1:3 never-closed, 2:3-2:7 never-closed ?"},
        // The END that is missing is the inner one, whichever object is open at the end.
        {"A:\n  B:\n    x = 1\nEND\n", "1:1-1:3 never-closed ?, 4:1-4:4 indentation @2:3"},
        {"A:\n  B:\n    x = 1\n  C:\n  END\nEND\n",
         "1:1-1:3 never-closed ?, 4:3-4:5 indentation @2:3"},
        {"A:\n  B:\n  C:\n  END\nEND\n", "1:1-1:3 never-closed ?, 5:1-5:4 indentation @2:3"},
        {"A:\n  B:\n    C:\n      x=1\nD:\nEND\n",
         "1:1-1:3 never-closed, 2:3-2:5 never-closed, 3:5-3:7 never-closed ?, "
         "5:1-5:3 indentation @3:5, 5:1-5:3 indentation @2:3, 5:1-5:3 indentation @1:1"},
        {"A:\n  B:\n  END\n  END\nEND\n",
         "4:3-4:6 indentation @1:1, 5:1-5:4 error unexpected-end !"},
        {"  A:\nx=1\n  END\n", "2:1-2:4 indentation @1:3"},
        {"A:\nB:\nx=1\nEND\nEND\n", ""},
        {"A:\n  B:\n  x=1\n  END\nEND\n", ""},
        {"A:\n  x=1\n  END\nB:\n    y=2\n  z=3\n END", ""},
        {"A:\n\tB:\n        x=1\n\tEND\nEND", ""},
        {"A:\n  x = 1, \\\n2\ny = 1 \\\n\nEND", ""},
        {"A:\n&replace   B: b\n    x=1\n  END # B:b\nEND", ""},
        {"A:\n  x=1\n&replace B: b\n  END\nEND", ""},
        {"A:\n  B:\n  END\n  END\nC:\nEND\n", "4:3-4:6 indentation @1:1"},
        {"A:\n  B:\n    x=1\n   END\n   END\n", ""},
    });
}

TEST(KDXCheck, FindsEndsThatSayOtherwise) {
    expectAll({
        {"B:\nEND\nA: a\nEND # B: b\n", "4:5-4:11 end-comment @3:1 ?"},
        {"A: a\nEND #A:b\nB: b c\nEND # A: a\nA: x\nEND # B:b  c\nB:\nEND # B:b c.",
         "2:5-2:9 end-comment @1:1 ?, 4:5-4:11 end-comment @3:1 ?, "
         "6:5-6:13 end-comment @5:1 ?"},
        {"A:\nB:\nEND # A:\n", "1:1-1:3 never-closed ?, 3:5-3:9 end-comment @2:1 ?"},
        {"A: a\\ #\nEND # A:\n", "2:5-2:9 end-comment @1:1"},
        // Where a backslash is in the way, there is no fix.
        {"A:\nEND # A:s1 \\ ## c\\\t", ""},
        {"A: a\nEND # A:\\x\\\t", ""},
        {"A: a\nEND # A:\\x", "2:5-2:11 end-comment @1:1"},
        {"A: a\nEND #A : a  \nA:\nEND # A:A\n&replace M: M\nEND # M:M\nB:\nEND #B:", ""},
        {"A: a\nEND # closes it\nB:\nEND # see: C\nC:\nEND # http://x\nD:\nEND # a-b:c", ""},
        {"A: a\nEND # A: closes it\nA: b\nEND # A:a, closes it\nA: c\nEND # A:c.", ""},
        {"A: a\nEND a: 1\nEND\nEND\nB:\n END = 2\n ENDX = 3\nEND\n",
         "2:1-2:9 end-as-name, 6:2-6:9 end-as-name"},
        {"A:\nEN\\\nD\nB:\nEND \\\n# B:\nC:\nEND # a\\\n\n", "2:1-3:2 cut-end, 5:1-5:4 cut-end"},
    });
}

TEST(KDXCheck, FindsNames) {
    const std::string many = [] {
        std::string text = "A:\n";
        for (int i = 0; i < 50; ++i) text += "x" + std::to_string(i) + " = 1\n";
        return text;
    }();
    expectAll({
        {"A:\n x=1\nEND\nA: A\n x=2\nEND",
         "4:1-4:5 repeated-object @1:1, 5:2-5:5 repeated-parameter @2:2"},
        {"A:\n B: b\n  x  y=1\n END\nEND\nA:\n B: b\n  x y=2\n END\n x=1\nEND\nB: b\nEND",
         "6:1-6:3 repeated-object @1:1, 7:2-7:6 repeated-object @2:2, "
         "8:3-8:8 repeated-parameter @3:3"},
        {many + "x9 = 1\nx49 = 1\nEND\nB:\nx49 = 1\nEND\n",
         "52:1-52:7 repeated-parameter @11:1, 53:1-53:8 repeated-parameter @51:1"},
        {"A: a/b\nx = a/b\nEND\n", "1:5-1:6 slash-in-name"},
    });
}

TEST(KDXCheck, FindsHashesAndBackslashes) {
    expectAll({
        {"A: a#1\nx = a#b\ny = # c\nz=# c\nEND",
         "1:5-1:7 hash-in-value !, 2:6-2:8 hash-in-value !, 3:5-3:8 hash-in-value, "
         "4:3-4:6 hash-in-value"},
        {"A:# a\nx = a\\#b\ny = a\t#c\nz =\n> a#b\nEND#A:", ""},
        {"A:\nx = 1 # c \\\n 2\ny = 1 # c \\\n\nz = 1 \\\n 2 # c\nEND",
         "2:7-2:8 swallowed-continuation"},
        {"A:\nx = 1 # c\\\ny = 2\nEND", "2:7-2:8 swallowed-continuation"},
        {"# C:\\\nA:\nEND\n", "1:1-1:2 swallowed-continuation, 3:1-3:4 error unexpected-end !"},
        {"A:\nx = C:\\\n  y = 1\nEND", "2:7-2:8 swallowed-statement @3:3 ?"},
        {"A:\nx = C:\\#\\\ny = 1\\\nz: 1\nEND",
         "2:9-2:10 swallowed-statement @3:1, "
         "3:6-3:7 swallowed-statement @4:1"},
        {"! \\\nA:\n! \\\na\n> a\\\nEND\n",
         "1:3-1:4 swallowed-statement @2:1, 5:4-5:5 swallowed-statement @6:1 ?"},
        {"A:\nx = a \\\ny = 1\nz = a,\\\ny = 1\nu = a\\\nb\nEND", ""},
        {"A:\nx = a\\\n> b\n# a\\\n\nEND\nENDX\\\n\n",
         "2:6-2:7 swallowed-statement @3:1 ?, 7:5-7:5 error unknown-syntax"},
        {"A:\n  \\\n  x = 1, \\\n\\\n2\nEND", "2:3-2:4 lone-backslash, 4:1-4:2 lone-backslash"},
        {"A:\nx = 1, \\\n \\ \n2=3\nEND", ""},
        {"A:\nx = C:\\\n\\\n y = 1\nEND",
         "2:7-2:8 swallowed-statement @4:2 ?, 3:1-3:2 lone-backslash"},
        {"! a\\\n\\\nA:\nEND\n! a\\\n\\",
         "1:4-1:5 swallowed-statement @3:1, 2:1-2:2 lone-backslash, 4:1-4:4 error unexpected-end "
         "!, "
         "6:1-6:2 lone-backslash"},
        {"A:\n x = 1 \\\r\n\nEND", "2:8-2:10 backslash-return ?"},
        {"A:\n x = 1 # \\\r\n\nEND", ""},
    });
}

TEST(KDXCheck, FindsBytes) {
    expectAll({
        {"\xEF\xBB\xBF-", "1:1-1:1 byte-order-mark !, 1:1-1:2 error unknown-syntax"},
        {"A:\nx = \xC3\xA4 \xE9\n# \xFF\nEND", "2:8-2:9 no-utf8, 3:3-3:4 no-utf8"},
        {std::string("> a\0\0b\n", 7), "1:4-1:5 nul-byte"},
    });
}

TEST(KDXCheck, LeavesOutWhatCommentsIgnore) {
    expectAll({
        {"A:\nx = # kdx: ignore hash-in-value\ny = # kdx:ignore no-utf8 , hash-in-value\nEND", ""},
        {"A:\n# kdx: ignore repeated-parameter, hash-in-value\n\n# c\nx=# 1\nx=#2\nEND",
         "6:1-6:3 repeated-parameter @5:1, 6:3-6:5 hash-in-value"},
        {"A:\n# kdx 2: ignore hash-in-value\nx=#\nEND", "3:3-3:4 hash-in-value"},
        {"# kdx: ignore never-closed\nA:\nB: # kdx: ignore no-utf8\n", "3:1-3:3 never-closed ?"},
        {"- # kdx: ignore unknown-syntax\nA:\nEND # kdx:ignore", "1:1-1:2 error unknown-syntax"},
    });
}

TEST(KDXCheck, TakesOptions) {
    const std::string text = "A:\n A:\n  x = #\n END\nx = #\nEND\nEND\nEND\nEND\n";
    Options options;
    options.maxDepth = 1;
    options.warnings = false;
    EXPECT_EQ(problemsOf(text, options),
              "2:2-2:4 error too-deep, 7:1-7:4 error unexpected-end !, 8:1-8:4 error "
              "unexpected-end !, 9:1-9:4 error unexpected-end !");
    options = {};
    options.rules = {"hash-in-value", "unexpected-end"};
    options.maxProblems = 1;
    EXPECT_EQ(problemsOf(text, options), "3:7-3:8 hash-in-value, 7:1-7:4 error unexpected-end !");
    const auto report = kiv::KDXCheck::check(text, options);
    EXPECT_EQ(std::pair(report.errors, report.warnings), std::pair(std::size_t{3}, std::size_t{2}));
    options.rules = {};
    EXPECT_EQ(problemsOf("A:\nx = #\ny = #\nz = #\nEND\nB:\nu = #", options),
              "2:5-2:6 hash-in-value");
    EXPECT_EQ(problemsOf("A:\nx = #\ny = #\n", options), "1:1-1:3 never-closed ?");
    options.rules = {"no-rule"};
    EXPECT_EQ(failureOf<kiv::data::invalid>([&] { (void)kiv::KDXCheck::check(text, options); }),
              "KDXCheck::check (4): There is no rule with the name no-rule.");
}

TEST(KDXCheck, SaysWhatIsWrongAndHowToMendIt) {
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
TEST(KDXCheck, HasEveryRuleDocumented) {
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
    }
}

}  // namespace

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
