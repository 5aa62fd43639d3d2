#include <LogicalLines.h>
#include <gtest/gtest.h>
#include <kiv/StringUtilities.h>

#include <random>
#include <string>
#include <vector>

#include "support/EventRecorder.h"

// The tool cuts a text into logical lines itself, because the parser does not tell where a line
// began. Here it is held to the parser: the same events, at the same lines, for any text.

namespace {

using kiv::MiniKDXParser;

std::string eventsOfTool(const std::string& text) {
    const char* const names[] = {"",           "",           "", " newObject ", " newParameter ",
                                 " endObject", " newAction "};
    std::string events;
    std::string first;
    std::string second;
    for (kdx::LogicalLines lines(text); lines.next();) {
        const auto kind = lines.classify(first, second);
        const std::string line(lines.text());
        if (kind == MiniKDXParser::lineUnrecognised)
            return events + "Unknown KDX syntax found:\n" + line + ".";
        if (kind == MiniKDXParser::lineVerbatim || kind == MiniKDXParser::lineBlank) continue;
        events += std::to_string(lines.pieces().back().line - 1) + names[kind];
        if (kind == MiniKDXParser::lineAction) events += line;
        if (kind == MiniKDXParser::lineObject || kind == MiniKDXParser::lineParameter)
            events += first + '|' + second;
        events += '\n';
    }
    return events;
}

std::string randomText(std::mt19937& random) {
    const std::vector<std::string> pieces = {"A:",  "x = 1", "END", ">", "!", "#",  "\\", "\\\n",
                                             "\\ ", "\\\r",  "\r",  " ", " ", "\t", "\n", "\n"};
    std::string text;
    for (auto length = random() % 20; length > 0; --length)
        text += pieces[random() % pieces.size()];
    return text;
}

TEST(LogicalLines, AreThoseOfTheParserAndKnowWhereEachByteStands) {
    std::mt19937 random(5);
    for (int i = 0; i < 200000; ++i) {
        const std::string text = randomText(random);
        SCOPED_TRACE(testing::PrintToString(text));
        const auto physical = kiv::StringUtilities::stringToVector(text, '\n');
        ASSERT_EQ(eventsOfTool(text), eventsOf(physical));
        for (kdx::LogicalLines lines(text); lines.next();)
            for (std::size_t at = 0; at < lines.text().size(); ++at) {
                const kdx::Place place = lines.placeOf(at);
                ASSERT_EQ(physical.at(place.line - 1).at(place.column - 1), lines.text()[at]);
            }
    }
}

}  // namespace
