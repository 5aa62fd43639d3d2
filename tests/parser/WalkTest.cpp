#include <utility>

#include "support/EventRecorder.h"
#include "support/Text.h"
#include "support/ValueSemantics.h"

namespace {

struct Walk {
    const char *lines, *events, *openAtEnd = "";
};
const std::vector<Walk> kWalks = {
    {"", ""},
    {"|  |# a|! b: c| $ d = e", ""},
    {"A: x|B:", "0 newObject A|x\n1 newObject B|\n", "A|x B|"},
    {"END|END # A|A:|END|END",
     "0 endObject\n1 endObject\n2 newObject A|\n3 endObject\n4 endObject\n"},
    {"  > go # now  ", "0 newAction   > go # now  \n"},
    {"p = a\\ b|q = \\ c", "0 newParameter p|a\\ b\n1 newParameter q|\\ c\n"},
    // Continued lines.
    {"p = 1 \\| \t b \\|\tc|q =", "2 newParameter p|1 b c\n3 newParameter q|\n"},
    {"p = 1\\\\|2", "1 newParameter p|1\\2\n"},
    {"p = 1 # note\\|b", "1 newParameter p|1\n"},
    {"p = 1\\|b # note\\|c|END", "2 newParameter p|1b\n3 endObject\n"},
    {"E\\|ND", "1 endObject\n"},
    {"Sam\\|  ple\\|  : s1", "2 newObject Sample|s1\n", "Sample|s1"},
    {"! a\\|p = 1|# b\\|q = 1|r = 1", "4 newParameter r|1\n"},
    {"  > go \\|  on", "1 newAction   > go on\n"},
    // The continuation ends: at an empty line or one of blanks, and at the end of the list.
    {"p = 1\\|  |q = 2", "1 newParameter p|1\n2 newParameter q|2\n"},
    {"\\|\\||\\|p = 1", "4 newParameter p|1\n"},
    {"p = 1\\|2\\", "1 newParameter p|12\n"},
    {"\\", ""},
    // A backslash that blanks follow continues a first line that has a backslash and a space.
    {"p = 1\\  \t|2", "1 newParameter p|12\n"},
    {"p = 1\\\t|q = 2", "0 newParameter p|1\\\n1 newParameter q|2\n"},
    {"p = 1\\ \r|2", "1 newParameter p|12\n"},
    {"p = a\\ b\\\r|c", "1 newParameter p|a\\ bc\n"},
    {"p = 1\\|2\\ |q = 3", "1 newParameter p|12\\\n2 newParameter q|3\n"},
    {"  > a\\ |b", "1 newAction > ab\n"},
    {"  > a\\ b\\|c", "1 newAction > a\\ bc\n"},
};

const std::string k80(80, 'x');

struct Failure {
    std::string lines, shown, state;
};
const std::vector<Failure> kFailures = {
    {"Sample: s1|gain -> 3|END", "gain -> 3", "1 Sample|s1"},
    {"A:|B:|END|?", "?", "3 A|"},
    {"|   end  # c\r", "   end  # c\r", "1 "},
    {k80, k80, "0 "},
    {k80 + "\\|y", k80.substr(3) + "...", "1 "},
    {"  a\\||", "  a", "1 "},
    {"  a\\ b\\ ", "a\\ b", "0 "},
    {"50%1 %%2", "50%1 %%2", "0 "},
    {std::string("a\0b", 3), std::string("a\0b", 3), "0 "},
};

}  // namespace

TEST(Walk, reportsEventsAndLeavesTheLineCountAndTheOpenObjects) {
    for (const auto& [text, events, open] : kWalks) {
        EventRecorder parser(lines(text));
        parser.parse();
        EXPECT_EQ(parser.events, events) << text;
        EXPECT_EQ(parser.state(), std::to_string(parser.getCommands().size()) + ' ' + open) << text;
    }
}

TEST(Walk, stopsAtAnUnrecognisedLine) {
    for (const auto& [text, shown, state] : kFailures) {
        EventRecorder parser(lines(text));
        EXPECT_EQ(failureOf<kiv::data::invalid>([&] { parser.parse(); }),
                  "MiniKDXParser::parse (4): Unknown KDX syntax found:\n" + shown + ".");
        EXPECT_EQ(parser.state(), state) << text;
    }
}

TEST(Walk, showsTheEnclosingObjectsDuringEachCallbackAndJoinsContinuedLines) {
    EventRecorder parser(linesOf(readData("walk.kdx")));
    parser.reaction = [](EventRecorder& self) {
        self.events += "  in " + self.openObjects() + '\n';
    };
    parser.parse();
    EXPECT_EQ(parser.events, readData("walk.events"));
    EXPECT_EQ(eventsOf(linesOf(readData("continued.kdx"))), readData("continued.events"));
}

TEST(Walk, needsNoCallback) {
    kiv::MiniKDXParser({"A: x", "p = 1", "END", ">act"}).parse();
}

TEST(Walk, keepsItsStateUntilItStartsAfresh) {
    EventRecorder parser({"A: x", "?"});
    EXPECT_THROW(parser.parse(), kiv::data::invalid);
    parser.setCommands({});
    EXPECT_EQ(parser.state(), "1 A|x");
    parser.parse();
    EXPECT_EQ(parser.state(), "0 ");
}

TEST(Walk, followsLinesThatACallbackChanges) {
    EventRecorder parser({"p = 1", "q = 2"});
    parser.reaction = [](EventRecorder& self) {
        if (self.getLineNumber() == 0) self.setCommands({"", "r = \\", "3", "s = 4"});
        if (self.getLineNumber() == 2) self.getCommands().clear();
    };
    parser.parse();
    EXPECT_EQ(parser.events, "0 newParameter p|1\n2 newParameter r|3\n");
    EXPECT_EQ(parser.getLineNumber(), 3U);
}

TEST(Walk, isCopiedWithItsLinesAndStateAndAMoveIsACopy) {
    EventRecorder source({"A: x", "p = 1"});
    source.parse();
    const auto textOf = [](EventRecorder parser) {
        return parser.state() + ": " + joined(std::as_const(parser).getCommands());
    };
    EXPECT_EQ(textOf(source), "2 A|x: A: x|p = 1");
    expectValueSemantics(source, EventRecorder({"B:"}), textOf, textOf(source));
    source.setCommands(source.getCommands());
    EXPECT_EQ(textOf(source), "2 A|x: A: x|p = 1");
}
