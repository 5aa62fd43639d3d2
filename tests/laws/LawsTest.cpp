#include <gtest/gtest.h>
#include <kiv/Error.h>
#include <kiv/KDXToStringMapMap.h>
#include <kiv/StringMapMapToKDX.h>

#include <string>
#include <string_view>
#include <vector>

#include "support/EventRecorder.h"
#include "support/Text.h"

using kiv::KDXToStringMapMap;
using kiv::MiniKDXParser;
using kiv::StringMapMap;
using Format = kiv::StringMapMapToKDX::Format;

namespace {

const std::vector<std::string_view> kNamePieces = {"A", "b", "7", " ", "  ", ".", "&", "_", "END"};
const std::vector<std::string_view> kValuePieces = {
    "A",   "b",  "7", " ",   "  ", "\t",     ".", ":",  "=",        "!",   "$",   ">",        "&",
    "END", "\\", "#", "\\#", "/",  "\\\n  ", "-", "\r", "\xC3\xA4", "# c", "\\ ", "&replace "};

/// One line of a text, with all that its kind allows.
std::string randomLine(RandomText& random) {
    const std::string indentation = random.of({" ", "\t", "  "}, 2);
    if (random.oneIn(3)) return indentation + "END" + random.of({" ", "# c"}, 2);
    if (random.oneIn(3)) return indentation + random.of({"!", "$", ">", "#"}, 1) + " x";
    const std::string name = random.of(kNamePieces, 3);
    const std::string value = random.of(kValuePieces, 5);
    return indentation + name + (random.oneIn(2) ? ":" : "=") + value;
}

std::string randomText(RandomText& random) {
    std::string text = "A:\n";
    while (!random.oneIn(8)) text += randomLine(random) + '\n';
    return text;
}

/// What a conversion of text or lines leaves in the map, and what it throws.
template <typename Source>
std::string outcomeOf(const Source& source, StringMapMap& map) {
    try {
        KDXToStringMapMap::convert(source, map);
        return "";
    } catch (const KDXToStringMapMap::Except& exception) {
        return exception.message();
    } catch (const kiv::Error& error) {
        return error.message();
    }
}

/// Whether the text holds what the writer would have to escape.
bool holdsWhatCannotBeWritten(const std::string& text) {
    EventRecorder parser(linesOf(text));
    parser.parse();
    for (const std::string& event : linesOf(parser.events)) {
        const bool object = event.find(" newObject ") != std::string::npos;
        if (object && event.find('/') != std::string::npos) return true;
        if (event.find(" newAction ") == std::string::npos && event.back() == '\\') return true;
    }
    return false;
}

StringMapMap writtenAndReadAgain(const StringMapMap& map, const Format& format) {
    std::string text;
    kiv::StringMapMapToKDX::convert(map, text, format);
    StringMapMap again;
    EXPECT_EQ(outcomeOf(text, again), "") << text;
    return again;
}

}  // namespace

TEST(Laws, aMapThatWasReadIsReadAgainFromWhatIsWritten) {
    RandomText random;
    int texts = 0;
    for (int i = 0; i < 8000; ++i) {
        const std::string text = randomText(random);
        StringMapMap map;
        if (!outcomeOf(text, map).empty() || holdsWhatCannotBeWritten(text)) continue;
        ++texts;
        for (const Format& format : {Format(), Format(0, false, false), Format(3, true, false)})
            ASSERT_EQ(dump(writtenAndReadAgain(map, format)), dump(map)) << text;
    }
    EXPECT_GT(texts, 800);
}

// The exceptions to the law before: the writer escapes nothing.
TEST(Laws, whatCannotBeWrittenIsReadAsSomethingElse) {
    struct Row {
        const char *text, *readAgain;
    };
    for (const auto& [text, readAgain] : {Row{"A: b/c\nEND\n", "/A:b {}\n/A:b/c {}\n"},
                                          Row{"A:\n  p = 1\\\r\nEND\n", "/A {p=1END}\n"},
                                          Row{"A: b\\\r\n  p = 1\nEND\n", "/A:bp = 1 {}\n"}}) {
        EXPECT_TRUE(holdsWhatCannotBeWritten(text)) << text;
        StringMapMap map;
        KDXToStringMapMap::convert(text, map);
        EXPECT_EQ(dump(writtenAndReadAgain(map, Format(2, true, false))), readAgain) << text;
    }
}

TEST(Laws, aTextAndTheListOfItsLinesAreTheSame) {
    RandomText random;
    for (int i = 0; i < 2000; ++i) {
        const std::string text = randomText(random);
        StringMapMap fromText;
        StringMapMap fromLines;
        const std::string thrown = outcomeOf(text, fromText);
        ASSERT_EQ(thrown, outcomeOf(linesOf(text), fromLines)) << text;
        ASSERT_EQ(dump(fromText), dump(fromLines)) << text;
    }
}

TEST(Laws, aLineIsWhatItIsInBothOverloadsAndAtAnyIndentation) {
    RandomText random;
    for (int i = 0; i < 8000; ++i) {
        const std::string line = random.of(kValuePieces, 6);
        std::string first;
        std::string second;
        std::string indentedFirst;
        std::string indentedSecond;
        const auto type = MiniKDXParser::determineLineType(line, first, second);
        ASSERT_EQ(MiniKDXParser::determineLineType(line), type) << line;
        ASSERT_EQ(MiniKDXParser::determineLineType(" \t" + line, indentedFirst, indentedSecond),
                  type);
        ASSERT_EQ(first + '|' + second, indentedFirst + '|' + indentedSecond) << line;
    }
}
