// Callbacks that do whatever a callback may do, at every event of a walk.

#include <gtest/gtest.h>
#include <kiv/KDXToStringMapMap.h>

#include <memory>
#include <utility>
#include <vector>

#include "support/EventRecorder.h"

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
    assigned.reaction = [](EventRecorder&) {};
    assigned.parse();
    EXPECT_EQ(assigned.getLineNumber(), self.getCommands().size());
}

void parseAgain(EventRecorder& self) {
    const auto reaction = std::exchange(self.reaction, [](EventRecorder&) {});
    self.parse();
    self.reaction = reaction;
}

const std::vector<Deed> kDeeds = {
    {"throw", [](EventRecorder&) { throw 1; }},
    {"set other lines", [](EventRecorder& self) { self.setCommands(kOthers); }},
    {"clear the lines", [](EventRecorder& self) { self.getCommands().clear(); }},
    {"free the lines", [](EventRecorder& self) { Lines().swap(self.getCommands()); }},
    {"grow the lines", [](EventRecorder& self) { self.getCommands().resize(1000, "END"); }},
    {"parse again", parseAgain},
    {"copy and destroy", copyAndDestroy},
    {"become another",
     [](EventRecorder& self) { self.MiniKDXParser::operator=(kiv::MiniKDXParser(kOthers)); }},
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
    parser.reaction = [](EventRecorder&) {};
    parser.setCommands(kLines);
    parser.events.clear();
    parser.parse();
    EXPECT_EQ(parser.events, fresh.events);
    EXPECT_EQ(parser.openObjects(), "C|");
    return reached;
}

/// A converter that may be told to throw, and to walk again.
class HostileConverter : public kiv::KDXToStringMapMap {
public:
    using KDXToStringMapMap::KDXToStringMapMap;

    std::size_t eventsUntilDeed = 0;
    void (*deed)(HostileConverter&) = nullptr;

private:
    void newObject(const std::string& type, const std::string& name) override {
        react();
        KDXToStringMapMap::newObject(type, name);
    }
    void newParameter(const std::string& name, const std::string& value) override {
        react();
        KDXToStringMapMap::newParameter(name, value);
    }
    void endObject() override {
        react();
        KDXToStringMapMap::endObject();
    }
    void react() {
        if (eventsUntilDeed != 0 && --eventsUntilDeed == 0) deed(*this);
    }
};

const std::vector<void (*)(HostileConverter&)> kConverterDeeds = {
    [](HostileConverter&) { throw 1; },
    [](HostileConverter& self) {
        self.setCommands({"E: e", "t = 6", "END", "END", "END"});
    },
    [](HostileConverter& self) { self.getCommands().clear(); },
    [](HostileConverter& self) { self.parse(); },
    [](HostileConverter& self) { const HostileConverter copy(self); },
    [](HostileConverter& self) { HostileConverter(self).parse(); },
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

TEST(HostileCallbacks, leaveTheMapOfAConverterWhole) {
    const Lines text{"A: x", "p = 1", "B: y", "q = 2", "END", "r = 3", "END", "C: z", "END"};
    for (const auto& deed : kConverterDeeds) {
        for (std::size_t events = 1; events <= text.size(); ++events) {
            kiv::StringMapMap map;
            HostileConverter converter(text, map);
            const kiv::StringMapMap before = map;
            converter.deed = deed;
            converter.eventsUntilDeed = events;
            try {
                converter.parse();
            } catch (int) {
            } catch (const kiv::KDXToStringMapMap::Except&) {  // ENDs or parameters left over
            }
            for (const auto& [path, parameters] : before)
                for (const auto& [name, value] : parameters)
                    EXPECT_EQ(map.at(path).at(name), value) << events << path << name;
        }
    }
}
