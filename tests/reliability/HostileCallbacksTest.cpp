// Callbacks that do whatever a callback may do, at every event of a walk.

#include <gtest/gtest.h>
#include <kiv/KDXToStringMapMap.h>

#include <memory>
#include <utility>
#include <vector>

#include "support/EventRecorder.h"
#include "support/Text.h"

namespace {

using Lines = std::vector<std::string>;

const Lines kLines{
    "A: x",  "p = 1 \\", "  2", "> go", "B: a name that is longer than a small string",
    "q = 3", "END",      "END", "END",  "C:"};
const Lines kOthers{"D: d", "r = \\", "4", "END", "> stop", "s = 5"};

struct Deed {
    const char* name;
    void (*act)(EventRecorder&);
};

void copyAndDestroy(EventRecorder& self) {
    auto copy = std::make_unique<EventRecorder>(self);
    EventRecorder assigned;
    assigned = *copy;
    copy.reset();
    assigned.reaction = [](auto&) {};
    assigned.parse();
    EXPECT_EQ(assigned.getLineNumber(), self.getCommands().size());
}

void parseAgain(EventRecorder& self) {
    const auto reaction = std::exchange(self.reaction, [](auto&) {});
    self.parse();
    self.reaction = reaction;
}

const std::vector<Deed> kDeeds = {
    {"throw", [](auto&) { throw 1; }},
    {"set other lines", [](auto& self) { self.setCommands(kOthers); }},
    {"clear the lines", [](auto& self) { self.getCommands().clear(); }},
    {"free the lines", [](auto& self) { Lines().swap(self.getCommands()); }},
    {"grow the lines", [](auto& self) { self.getCommands().resize(1000, "END"); }},
    {"parse again", parseAgain},
    {"copy and destroy", copyAndDestroy},
    {"become another",
     [](auto& self) { self.MiniKDXParser::operator=(kiv::MiniKDXParser(kOthers)); }},
};

/// Walks the lines with a callback that does `deed` at event number `index`.
/// @return whether the walk came that far.
bool doAt(std::size_t index, const Deed& deed) {
    EventRecorder parser(kLines);
    std::size_t count = 0;
    parser.reaction = [&](EventRecorder& self) {
        if (count++ == index) deed.act(self);
    };
    try {
        parser.parse();
        EXPECT_GE(parser.getLineNumber(), parser.getCommands().size());
    } catch (int) {
        EXPECT_LT(parser.getLineNumber(), kLines.size());
    }
    const bool reached = count > index;

    EventRecorder fresh(kLines);
    fresh.parse();
    parser.reaction = [](auto&) {};
    parser.setCommands(kLines);
    parser.events.clear();
    parser.parse();
    EXPECT_EQ(parser.events, fresh.events);
    EXPECT_EQ(parser.openObjects(), "C|");
    return reached;
}

/// A converter that does a deed when its parameters are counted down.
class HostileConverter : public kiv::KDXToStringMapMap {
public:
    using KDXToStringMapMap::KDXToStringMapMap;

    int parametersUntilDeed = 0;
    void (*deed)(HostileConverter&) = nullptr;

private:
    void newParameter(const std::string& name, const std::string& value) override {
        if (--parametersUntilDeed == 0) deed(*this);
        KDXToStringMapMap::newParameter(name, value);
        if (parametersUntilDeed == 0) deed(*this);
    }
};

const std::vector<void (*)(HostileConverter&)> kConverterDeeds = {
    [](auto&) { throw 1; },
    [](auto& self) {
        self.setCommands(Lines{"E: e", "t = 6", "END", "END", "END"});
    },
    [](auto& self) { self.getCommands().clear(); },
    [](auto& self) { self.parse(); },
    [](auto& self) { HostileConverter(self).parse(); },
};

}  // namespace

TEST(HostileCallbacks, leaveAWalkInAStateToGoOnFrom) {
    for (const Deed& deed : kDeeds) {
        SCOPED_TRACE(deed.name);
        std::size_t index = 0;
        while (doAt(index, deed)) ++index;
        EXPECT_GE(index, 9U);
    }
}

TEST(HostileCallbacks, leaveAConverterToGoOnWithWhateverTheMapHolds) {
    const Lines text{"A: x", "p = 1", "B: y", "q = 2", "END", "r = 3", "END", "C: z", "END"};
    for (const auto& deed : kConverterDeeds) {
        for (int parameters = 1; parameters <= 3; ++parameters) {
            kiv::StringMapMap map;
            HostileConverter converter(text, map);
            converter.deed = deed;
            converter.parametersUntilDeed = parameters;
            try {
                converter.parse();
            } catch (int) {
            } catch (const kiv::KDXToStringMapMap::Except&) {  // ENDs or parameters left over
            }
            converter.setCommands({"D:", "s = 4", "END"});
            converter.parse();
            EXPECT_NE(dump(map).find("D {s=4}"), std::string::npos) << dump(map);
        }
    }
}
