// The laws themselves are held by the programs in fuzz/: here stand the exceptions that they make.

#include <gtest/gtest.h>
#include <kiv/KDXFormatting.h>
#include <kiv/KDXToStringMapMap.h>
#include <kiv/StringMapMapToKDX.h>

#include <string>
#include <vector>

#include "support/EventRecorder.h"
#include "support/Text.h"

namespace {

std::string eventsOf(const std::vector<std::string>& lines) {
    EventRecorder recorder(lines);
    recorder.parse();
    return recorder.events;
}

}  // namespace

// The writer escapes nothing.
TEST(Laws, whatCannotBeWrittenIsReadAsSomethingElse) {
    for (const auto& [text, readAgain] : {Case{"A: b/c\nEND\n", "/A:b {}\n/A:b/c {}\n"},
                                          Case{"A:\n  p = 1\\\r\nEND\n", "/A {p=1END}\n"},
                                          Case{"A: b\\\r\n  p = 1\nEND\n", "/A:bp = 1 {}\n"}}) {
        kiv::StringMapMap map;
        kiv::KDXToStringMapMap::convert(text, map);
        std::string written;
        kiv::StringMapMapToKDX::convert(map, written, {2, true, false});
        kiv::StringMapMap again;
        kiv::KDXToStringMapMap::convert(written, again);
        EXPECT_EQ(dump(again), readAgain) << text;
    }
}

TEST(Laws, anEndCutInTwoIsTheExceptionFromStableIndentation) {
    const std::vector<std::string> lines = {"A:", "END", "EN\\", " D\\", " #x"};
    const auto indented = kiv::KDXFormatting::indentKDX(lines);
    EXPECT_EQ(eventsOf(indented), eventsOf(lines));
    EXPECT_NE(kiv::KDXFormatting::indentKDX(indented), indented);
}
