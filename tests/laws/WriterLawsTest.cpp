#include <gtest/gtest.h>
#include <kiv/Error.h>
#include <kiv/KDXBuilder.h>
#include <kiv/KDXFormatting.h>

#include <locale>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "support/EventRecorder.h"
#include "support/Text.h"

namespace {

/// The events of a text, and "unreadable" when it is no KDX.
std::string eventsOf(const std::vector<std::string>& lines) {
    EventRecorder recorder(lines);
    try {
        recorder.parse();
    } catch (const kiv::Error&) {
        return "unreadable";
    }
    return recorder.events;
}

/// Calls a builder at random, and says what a parser should then report.
class RandomDocument {
public:
    std::string events;

    std::string write(int calls) {
        for (; calls > 0; --calls) writeOne();
        while (depth > 0) close();
        return builder.getKDX();
    }

private:
    void writeOne() {
        switch (random.of({"."}, 8).size()) {
            case 0: return depth > 0 ? close() : writeAction();
            case 1: return close();
            case 2: return open(name(), text());
            case 3: return openRoot();
            case 4: return writeNumbers();
            case 5: return writeList();
            case 6: return writeAction();
            case 7: return openReplaced();
            case 8: return open(name(), "");
            default: return writeText();
        }
    }

    static std::string name() { return "N" + random.of({"a", "&", ".", "_", "9 z", "END"}, 3); }
    static std::string text() {
        return "v" + random.of({"=", ":", ">", "\\,", "!", "a b", "\xFF"}, 4) + ".";
    }
    void expect(const std::string& event) { events += std::to_string(line++) + " " + event + "\n"; }

    void expectOpen(const std::string& type, const std::string& objectName) {
        expect("newObject " + type + "|" + objectName);
        ++depth;
    }
    void open(const std::string& type, const std::string& objectName) {
        objectName.empty() ? builder.pushObject(type) : builder.pushObject(type, objectName);
        expectOpen(type, objectName);
    }
    void openReplaced() {
        const std::string type = name();
        builder.pushReplacedObject(type, "m");
        expectOpen("&replace " + type, "m");
    }
    void openRoot() {
        const std::string type = name();
        builder.pushRoot("/" + type + "/A:b:c/" + type + ":" + type);
        expectOpen(type, "");
        expectOpen("A", "b:c");
        expectOpen(type, "");
    }
    void close() {
        if (depth == 0) return;
        builder.popObject();
        expect("endObject");
        --depth;
    }
    void writeText() {
        const std::string parameter = name();
        const std::string value = text();
        builder.addParam(parameter, value);
        expect("newParameter " + parameter + "|" + value);
    }
    void writeList() {
        const std::string value = text();
        builder.addParam("list", std::vector<std::string>{value, "", value});
        expect("newParameter list|" + value + ", , " + value);
    }
    void writeNumbers() {
        const int number = static_cast<int>(text().size()) * 7919 - 20000;
        std::ostringstream real;
        real.imbue(std::locale::classic());
        real << number / 7e3;
        builder.addParam("n", number);
        expect("newParameter n|" + std::to_string(number));
        builder.addParam("n", number / 7e3, "[u");
        expect("newParameter n|" + real.str() + " [u]");
    }
    void writeAction() {
        if (depth > 0) return;
        const std::string value = text();
        kiv::ActionBuilder action("go");
        action.addParam("p", "1,2");
        action.addParam(value);
        builder.addAction(action);
        std::string escaped;
        for (const char c : value) escaped += c == ',' ? "\\," : std::string(1, c);
        expect("newAction >go p=1\\,2, " + escaped);
        builder.addAction(value, {value, value});
        expect("newAction >" + value + " " + value + "," + value);
    }

    inline static RandomText random;
    kiv::KDXBuilder builder;
    std::size_t line = 0;
    int depth = 0;
};

/// Lines that are often KDX, often continued, and often nearly something else.
std::vector<std::string> randomLines(RandomText& random) {
    static const std::vector<std::string_view> kPieces = {
        "A: b\n", "x = 1", " \\\n", "\\\n",   "\n",    "  ",     "END\n",  "END", "EN",
        "D",      "# c\n", "  # c", ">go",    "!v",    "ga\\\n", "\t",     "=",   ":",
        "a",      "\\#",   "\n",    "x=\\\n", "  :\n", "END",    "EN\\\n", " \n", "#\\\n"};
    return linesOf(random.of(kPieces, 12));
}

std::string withoutActionIndentation(const std::string& events) {
    std::string text;
    for (const std::string& event : linesOf(events)) {
        const std::size_t action = event.find("newAction ");
        const std::size_t marker = event.find('>');
        text +=
            action == std::string::npos ? event : event.substr(0, action) + event.substr(marker);
        text += '\n';
    }
    return text;
}

/// Whether a continuation cuts an END in two: then there are fewer END lines than ENDs.
bool hasCutEnd(const std::vector<std::string>& lines, const std::string& events) {
    int ends = 0;
    for (const std::string& event : linesOf(events))
        ends += event.find("endObject") != std::string::npos ? 1 : 0;
    for (const std::string& line : lines)
        ends -= kiv::MiniKDXParser::determineLineType(line) == kiv::MiniKDXParser::lineEnd ? 1 : 0;
    return ends > 0;
}

}  // namespace

TEST(Laws, theParserReportsWhatABuilderWasCalledWith) {
    for (int round = 0; round < 300; ++round) {
        RandomDocument document;
        const std::string text = document.write(round);
        ASSERT_EQ(eventsOf(linesOf(text)), document.events) << text;
        ASSERT_EQ(kiv::KDXFormatting::indentKDX(linesOf(text)), linesOf(text));
        kiv::MiniKDXParser(linesOf(text)).parse();  // reports to nobody
    }
}

TEST(Laws, indentationKeepsTheMeaningAndIsStable) {
    RandomText random;
    int held = 0;
    for (int round = 0; round < 50000; ++round) {
        const auto lines = randomLines(random);
        const std::string events = eventsOf(lines);
        const auto indented = kiv::KDXFormatting::indentKDX(lines);
        if (events == "unreadable" || indented.size() != lines.size()) continue;
        ASSERT_EQ(withoutActionIndentation(eventsOf(indented)), withoutActionIndentation(events))
            << testing::PrintToString(lines);
        if (hasCutEnd(lines, events)) continue;
        ASSERT_EQ(kiv::KDXFormatting::indentKDX(indented), indented)
            << testing::PrintToString(lines);
        ++held;
    }
    EXPECT_GT(held, 5000);
}

TEST(Laws, anEndCutInTwoIsTheExceptionFromStability) {
    const std::vector<std::string> lines = {"A:", "END", "EN\\", " D\\", " #x"};
    const auto indented = kiv::KDXFormatting::indentKDX(lines);
    EXPECT_EQ(eventsOf(indented), eventsOf(lines));
    EXPECT_NE(kiv::KDXFormatting::indentKDX(indented), indented);
}
