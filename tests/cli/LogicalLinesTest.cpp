#include <LogicalLines.h>
#include <gtest/gtest.h>
#include <kiv/Error.h>
#include <kiv/MiniKDXParser.h>
#include <kiv/StringUtilities.h>

#include <random>
#include <string>
#include <vector>

// The tool cuts a text into logical lines itself, because the parser does not tell where a line
// began. Here it is held to the parser: the same events, at the same lines, for any text.

namespace {

using kiv::MiniKDXParser;

class Recorder : public MiniKDXParser {
public:
    using MiniKDXParser::MiniKDXParser;
    std::string events;

private:
    void add(const std::string& kind, const std::string& first, const std::string& second) {
        events += std::to_string(getLineNumber()) + kind + first + '|' + second + '\n';
    }
    void newObject(const std::string& type, const std::string& name) override {
        add(" object ", type, name);
    }
    void newParameter(const std::string& name, const std::string& value) override {
        add(" parameter ", name, value);
    }
    void endObject() override { add(" end ", "", ""); }
    void newAction(const std::string& action) override { add(" action ", action, ""); }
};

std::string eventsOfTool(const std::string& text) {
    const char* kinds[] = {"", "", "", " object ", " parameter ", " end ", " action "};
    std::string events;
    std::string first;
    std::string second;
    for (kdx::LogicalLines lines(text); lines.next();) {
        const auto type = lines.classify(first, second);
        if (type == MiniKDXParser::lineUnrecognised) return events + "unknown";
        if (*kinds[type] == '\0') continue;
        if (type == MiniKDXParser::lineAction) first = lines.text();
        events += std::to_string(lines.pieces().back().line - 1) + kinds[type] + first + '|' +
                  second + '\n';
    }
    return events;
}

std::string eventsOfParser(const std::string& text) {
    Recorder recorder(kiv::StringUtilities::stringToVector(text, '\n'));
    try {
        recorder.parse();
        return recorder.events;
    } catch (const kiv::data::invalid&) {
        return recorder.events + "unknown";
    }
}

std::string randomText(std::mt19937& random) {
    const std::vector<std::string> pieces = {"A:",  "x = 1", "END", ">", "!", "#",  "\\", "\\\n",
                                             "\\ ", "\\\r",  "\r",  " ", " ", "\t", "\n", "\n"};
    std::string text;
    for (auto length = random() % 20; length > 0; --length)
        text += pieces[random() % pieces.size()];
    return text;
}

TEST(LogicalLines, AreThoseOfTheParser) {
    std::mt19937 random(5);
    for (int i = 0; i < 200000; ++i) {
        const std::string text = randomText(random);
        ASSERT_EQ(eventsOfTool(text), eventsOfParser(text)) << testing::PrintToString(text);
    }
}

// A byte's place is where the same byte stands in the text.
TEST(LogicalLines, KnowWhereEachByteStands) {
    std::mt19937 random(6);
    for (int i = 0; i < 20000; ++i) {
        const std::string text = randomText(random);
        const auto physical = kiv::StringUtilities::stringToVector(text, '\n');
        for (kdx::LogicalLines lines(text); lines.next();) {
            for (std::size_t at = 0; at < lines.text().size(); ++at) {
                const kdx::Place place = lines.placeOf(at);
                ASSERT_EQ(physical.at(place.line - 1).at(place.column - 1), lines.text()[at])
                    << testing::PrintToString(text);
            }
        }
    }
}

}  // namespace
