#include <kiv/Error.h>

#include <string>
#include <utility>
#include <vector>

#include "support/EventRecorder.h"
#include "support/Failure.h"
#include "support/Text.h"
#include "support/ValueSemantics.h"

namespace {

using Lines = std::vector<std::string>;

struct Walk {
    Lines lines;
    const char* events;
    const char* openAtEnd = "";
};
const std::vector<Walk> kWholeLines = {
    {{}, ""},
    {{"", "  ", "# a", "! b: c", " $ d = e"}, ""},
    {{"A: x", "B:"}, "0 newObject A|x\n1 newObject B|\n", "A|x B|"},
    {{"END", "END # A", "A:", "END", "END"},
     "0 endObject\n1 endObject\n2 newObject A|\n3 endObject\n4 endObject\n"},
    {{"p = 1", ">go"}, "0 newParameter p|1\n1 newAction >go\n"},
    {{"  > go # now  "}, "0 newAction   > go # now  \n"},
    {{"  > a\\ b  "}, "0 newAction   > a\\ b  \n"},
    {{"p = a\\ b", "q = \\ c"}, "0 newParameter p|a\\ b\n1 newParameter q|\\ c\n"},
};
const std::vector<Walk> kContinuedLines = {
    {{"p = 1 \\", " \t b \\", "\tc", "q ="}, "2 newParameter p|1 b c\n3 newParameter q|\n"},
    {{"p = 1\\\\", "2"}, "1 newParameter p|1\\2\n"},
    {{"p = 1 # note\\", "b"}, "1 newParameter p|1\n"},
    {{"p = 1\\", "b # note\\", "c", "END"}, "2 newParameter p|1b\n3 endObject\n"},
    {{"E\\", "ND"}, "1 endObject\n"},
    {{"Sam\\", "  ple\\", "  : s1"}, "2 newObject Sample|s1\n", "Sample|s1"},
    {{"! a\\", "p = 1", "# b\\", "q = 1", "r = 1"}, "4 newParameter r|1\n"},
    {{"  > go \\", "  on"}, "1 newAction   > go on\n"},
    // The continuation ends: at an empty line, at one of blanks, at the end of the list.
    {{"p = 1\\", "", "q = 2"}, "1 newParameter p|1\n2 newParameter q|2\n"},
    {{"p = 1\\", "  ", "q = 2"}, "1 newParameter p|1\n2 newParameter q|2\n"},
    {{"\\", "\\", "", "\\", "p = 1"}, "4 newParameter p|1\n"},
    {{"p = 1\\"}, "0 newParameter p|1\n"},
    {{"p = 1\\", "2\\"}, "1 newParameter p|12\n"},
    {{"\\"}, ""},
    // A backslash that blanks follow continues a first line that has a backslash and a space.
    {{"p = 1\\  \t", "2"}, "1 newParameter p|12\n"},
    {{"p = 1\\\t", "q = 2"}, "0 newParameter p|1\\\n1 newParameter q|2\n"},
    {{"p = 1\\\r", "q = 2"}, "0 newParameter p|1\\\n1 newParameter q|2\n"},
    {{"p = 1\\ \r", "2"}, "1 newParameter p|12\n"},
    {{"p = a\\ b\\\r", "c"}, "1 newParameter p|a\\ bc\n"},
    {{"p = 1\\", "2\\ ", "q = 3"}, "1 newParameter p|12\\\n2 newParameter q|3\n"},
    {{"  > a\\ ", "b"}, "1 newAction > ab\n"},
    {{"  > a\\ b\\", "c"}, "1 newAction > a\\ bc\n"},
};

const std::string k81(81, 'x');

struct Failure {
    Lines lines;
    std::string shown;
    std::size_t lineNumber;
    const char* open = "";
};
const std::vector<Failure> kFailures = {
    {{"Sample: s1", "gain -> 3", "END"}, "gain -> 3", 1, "Sample|s1"},
    {{"A:", "B:", "END", "?"}, "?", 3, "A|"},
    {{"", "   end  # c\r"}, "   end  # c\r", 1},
    {{k81.substr(1)}, k81.substr(1), 0},
    {{k81}, k81.substr(4) + "...", 0},
    {{std::string(40, 'b') + "\\", k81}, std::string(40, 'b') + std::string(37, 'x') + "...", 1},
    {{"  a\\", ""}, "  a", 1},
    {{"  a\\ b\\ "}, "a\\ b", 0},
    {{"50%1 %%2"}, "50%1 %%2", 0},
    {{std::string("a\0b", 3)}, std::string("a\0b", 3), 0},
};

void expectFailure(const Failure& failure) {
    EventRecorder parser(failure.lines);
    EXPECT_EQ(failureOf<kiv::data::invalid>([&] { parser.parse(); }),
              "MiniKDXParser::parse (4): Unknown KDX syntax found:\n" + failure.shown + ".");
    EXPECT_EQ(parser.getLineNumber(), failure.lineNumber) << failure.shown;
    EXPECT_EQ(parser.openObjects(), failure.open) << failure.shown;
}

}  // namespace

TEST(Walk, reportsEventsAndLeavesTheLineCountAndTheOpenObjects) {
    for (const auto* table : {&kWholeLines, &kContinuedLines})
        for (const Walk& walk : *table) {
            EventRecorder parser(walk.lines);
            parser.parse();
            EXPECT_EQ(parser.events, walk.events);
            EXPECT_EQ(parser.getLineNumber(), walk.lines.size()) << walk.events;
            EXPECT_EQ(parser.openObjects(), walk.openAtEnd) << walk.events;
        }
}

TEST(Walk, showsTheEnclosingObjectsDuringEachCallbackAndJoinsContinuedLines) {
    EventRecorder parser(linesOf(readData("walk.kdx")));
    parser.reaction = [](EventRecorder& self) {
        self.events += "  in " + self.openObjects() + '\n';
    };
    parser.parse();
    EXPECT_EQ(parser.events, readData("walk.events"));
    parser = EventRecorder(linesOf(readData("continued.kdx")));
    parser.parse();
    EXPECT_EQ(parser.events, readData("continued.events"));
}

TEST(Walk, stopsAtAnUnrecognisedLine) {
    for (const Failure& failure : kFailures) expectFailure(failure);
}

TEST(Walk, isLeftByWhatACallbackThrowsWithTheStateOfBeforeTheLine) {
    EventRecorder parser({"A: x", "p = 1", "> go", "END", "END"});
    const std::vector<std::string> open = {"", "A|x", "A|x", "A|x", ""};
    for (std::size_t line = 0; line < 5; ++line) {
        parser.reaction = [line](const EventRecorder& self) {
            if (self.getLineNumber() == line) throw std::size_t{line};
        };
        EXPECT_THROW(parser.parse(), std::size_t);
        EXPECT_EQ(parser.getLineNumber(), line);
        EXPECT_EQ(parser.openObjects(), open[line]) << line;
    }
}

TEST(Walk, needsNoCallback) {
    struct Silent : kiv::MiniKDXParser {
        using MiniKDXParser::getLineNumber;
        using MiniKDXParser::MiniKDXParser;
    };
    Silent parser({"A: x", "p = 1", "END", ">act"});
    parser.parse();
    EXPECT_EQ(parser.getLineNumber(), 4U);
}

TEST(Walk, startsAfreshEachTime) {
    EventRecorder parser({"A: x", "?"});
    EXPECT_THROW(parser.parse(), kiv::data::invalid);
    parser.setCommands({"p = 1", "B:"});
    EXPECT_EQ(parser.openObjects(), "A|x");
    EXPECT_EQ(parser.getLineNumber(), 1U);
    for (int i = 0; i < 2; ++i) {
        parser.events.clear();
        parser.parse();
        EXPECT_EQ(parser.events, "0 newParameter p|1\n1 newObject B|\n");
        EXPECT_EQ(parser.openObjects(), "B|");
    }
    parser.getCommands().clear();
    parser.parse();
    EXPECT_EQ(parser.openObjects(), "");
    EXPECT_EQ(parser.getLineNumber(), 0U);
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
        return parser.openObjects() + std::to_string(parser.getLineNumber()) +
               joined(std::as_const(parser).getCommands());
    };
    EXPECT_EQ(textOf(source), "A|x2A: x|p = 1");
    expectValueSemantics(source, EventRecorder({"B:"}), textOf, textOf(source));
    source.setCommands(source.getCommands());
    EXPECT_EQ(textOf(source), "A|x2A: x|p = 1");
}
