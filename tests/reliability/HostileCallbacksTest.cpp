// Callbacks that do whatever a callback may do, at every event of a walk.

#include <kiv/KDXToStringMapMap.h>

#include <functional>

#include "support/EventRecorder.h"
#include "support/Text.h"

namespace {

using Lines = std::vector<std::string>;

const Lines kLines = lines(
    "A: x|p = 1 \\|  2|> go|B: a name that is longer than a small string|q = 3|END|END|END|C:");
const Lines kOthers = lines("D: d|r = \\|4|END|> stop|s = 5");

struct Deed {
    const char* name;
    void (*act)(EventRecorder&);
};
const std::vector<Deed> kDeeds = {
    {"throw", [](auto&) { throw 1; }},
    {"set other lines", [](auto& self) { self.setCommands(kOthers); }},
    {"clear the lines", [](auto& self) { self.getCommands().clear(); }},
    {"free the lines", [](auto& self) { Lines().swap(self.getCommands()); }},
    {"grow the lines", [](auto& self) { self.getCommands().resize(1000, "END"); }},
    {"parse again", [](auto& self) { self.parse(); }},
    {"copy and destroy",
     [](auto& self) {
         EventRecorder copy;
         copy = EventRecorder(self);
         copy.parse();
         EXPECT_EQ(copy.getLineNumber(), self.getCommands().size());
     }},
    {"become another",
     [](auto& self) { self.MiniKDXParser::operator=(kiv::MiniKDXParser(kOthers)); }},
};

/// Walks the lines with a callback that does `deed` at event number `index`.
/// @return whether the walk came that far.
bool doAt(std::size_t index, const Deed& deed) {
    EventRecorder parser(kLines);
    std::string stateBefore;
    std::size_t count = 0;
    parser.reaction = [&](EventRecorder& self) {
        if (count++ != index) return;
        stateBefore = self.state();
        deed.act(self);
    };
    try {
        parser.parse();
        EXPECT_GE(parser.getLineNumber(), parser.getCommands().size());
    } catch (int) {
        EXPECT_EQ(parser.state(), stateBefore);
    }
    parser.reaction = [](auto&) {};
    parser.setCommands(kLines);
    parser.events.clear();
    parser.parse();
    EXPECT_EQ(parser.events + parser.state(), eventsOf(kLines) + "10 C|");
    return count > index;
}

/// A converter that does a deed in front of and behind what it does itself.
class HostileConverter : public kiv::KDXToStringMapMap {
public:
    using KDXToStringMapMap::KDXToStringMapMap;

    std::function<void(HostileConverter&)> deed = [](auto&) {};

private:
    void newParameter(const std::string& name, const std::string& value) override {
        deed(*this);
        KDXToStringMapMap::newParameter(name, value);
        deed(*this);
    }
};

const std::vector<void (*)(HostileConverter&)> kConverterDeeds = {
    [](auto&) { throw HostileConverter::Except(""); },
    [](auto& self) { self.setCommands(lines("E: e|t = 6|END|END|END")); },
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
    for (const auto act : kConverterDeeds)
        for (int callsUntilDeed : {1, 2, 3, 4, 5, 6}) {
            kiv::StringMapMap map;
            HostileConverter converter(lines("A: x|p = 1|B: y|q = 2|END|r = 3|END|C: z|END"), map);
            converter.deed = [&callsUntilDeed, act](auto& self) {
                if (--callsUntilDeed == 0) act(self);
            };
            messageOf([&] { converter.parse(); });  // ENDs or parameters may be left over
            converter.setCommands({"D:", "s = 4", "END"});
            converter.parse();
            EXPECT_NE(dump(map).find("D {s=4}"), std::string::npos) << dump(map);
        }
}
