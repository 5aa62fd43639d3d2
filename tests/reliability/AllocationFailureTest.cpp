// Makes every single allocation of every public operation fail, one after the other.

#include <gtest/gtest.h>
#include <kiv/ActionBuilder.h>
#include <kiv/CleanKDXParamString.h>
#include <kiv/Error.h>
#include <kiv/ExtractActionOrStateFromKDX.h>
#include <kiv/KDXBuilder.h>
#include <kiv/KDXFormatting.h>
#include <kiv/KDXPath.h>
#include <kiv/KDXToStringMapMap.h>
#include <kiv/Messages.h>
#include <kiv/ObjectKDXParser.h>
#include <kiv/StringMapMapToKDX.h>
#include <kiv/StringUtilities.h>

#include <cstdlib>
#include <functional>
#include <iostream>
#include <new>
#include <utility>
#include <vector>

#include "support/EventRecorder.h"
#include "support/Text.h"

namespace {

std::size_t allocationsUntilFailure = 0;  // 0: none fails
std::ptrdiff_t liveAllocations = 0;
std::size_t injectedFailures = 0;

}  // namespace

void* operator new(std::size_t size) {
    if (allocationsUntilFailure != 0 && --allocationsUntilFailure == 0) throw std::bad_alloc();
    void* memory = std::malloc(size == 0 ? 1 : size);
    if (memory == nullptr) throw std::bad_alloc();
    ++liveAllocations;
    return memory;
}

void* operator new(std::size_t size, const std::nothrow_t& /*tag*/) noexcept {
    try {
        return operator new(size);
    } catch (const std::bad_alloc&) {
        return nullptr;
    }
}

// Inlined, its free() would look to g++ like the wrong end of a plain new.
[[gnu::noinline]] void operator delete(void* memory) noexcept {
    if (memory != nullptr) --liveAllocations;
    std::free(memory);
}

[[gnu::noinline]] void operator delete(void* memory, std::size_t /*size*/) noexcept {
    operator delete(memory);
}

namespace {

using Lines = std::vector<std::string>;

/// Runs `call` on a copy of `start` with the allocation number `n` failing.
/// @return whether there was such an allocation.
template <typename State, typename Call, typename Check>
bool failOne(std::size_t n, const State& start, const Call& call, const Check& check) {
    State state(start);
    bool thrown = false;
    allocationsUntilFailure = n;
    try {
        call(state);
    } catch (const std::bad_alloc&) {
        thrown = true;
    }
    const bool failed = std::exchange(allocationsUntilFailure, 0) == 0;
    if (thrown) check(state);
    return failed;
}

/// Runs `call` on copies of `start`, once for each allocation that it makes, which then fails, and
/// looks at what each failure leaves behind.
template <typename State, typename Call, typename Check>
void failEach(const char* operation, const State& start, const Call& call, const Check& check) {
    for (std::size_t n = 1;; ++n) {
        SCOPED_TRACE(operation + (", allocation " + std::to_string(n)));
        const std::ptrdiff_t liveBefore = liveAllocations;
        if (!failOne(n, start, call, check)) return;
        EXPECT_EQ(liveAllocations, liveBefore);
        ++injectedFailures;
    }
}

/// The same for a call that only returns a value: it returns it still, after a failure.
template <typename Call>
void failEach(const char* operation, const Call& call) {
    const auto expected = call();
    failEach(
        operation, 0, [&](int) { call(); }, [&](int) { EXPECT_EQ(call(), expected); });
}

// Long texts, so that no string can do without an allocation.
const std::string kDocument =
    "! a verbatim line that is passed over by every reader\n"
    "> an action line that is longer than a small string \\\n"
    "   and continued # with a comment\n"
    "A long type of an object: and a long name for the same object\n"
    "  a long name of a parameter = a value that is   long as well # note\n"
    "  a long name of a parameter that continues = one piece of it \\\n"
    "    \\\n"
    "    and another piece that ends it\n"
    "  Z nested object that is not in order: with a name of its own\n"
    "  END\n"
    "  Another nested object without a name:\n"
    "    a parameter inside the nested object = 1\n"
    "  END\n"
    "END # A long type of an object\n"
    "A long type of an object: left open at the end of the whole text\n";
const Lines kLines = linesOf(kDocument);
const std::string kBroken = kDocument + "a line that is no line of this language, and no other\n";
const std::set<std::string> kTypes{"A long type of an object", "Some other type, never there"};

std::string wholeText(kiv::KDXBuilder builder) {
    builder.popAll();
    return builder.getKDX();
}
std::string wholeText(const kiv::ActionBuilder& builder) {
    return builder.getKDX();
}

template <typename Builder>
struct BuilderCall {
    const char* name;
    std::function<void(Builder&)> call;
};

/// A call that fails leaves the builder as it was, and can be made again.
template <typename Builder>
void failEach(const BuilderCall<Builder>& operation, const Builder& start) {
    const auto call = [&operation](Builder& builder) {
        try {
            operation.call(builder);
        } catch (const kiv::internal::error&) {  // not allowed here, and refused without a change
        }
    };
    Builder done(start);
    call(done);
    failEach(operation.name, start, call, [&](Builder& builder) {
        EXPECT_EQ(wholeText(builder), wholeText(start));
        call(builder);
        EXPECT_EQ(wholeText(builder), wholeText(done));
    });
}

const kiv::KDXBuilder kOtherBuilder("/Some other object of a long type:and a name/inside it");
const kiv::ActionBuilder kAction("an action with a name that is long");
const std::string kText = " some text that is longer than a small string ";

const std::vector<BuilderCall<kiv::KDXBuilder>> kBuilderCalls = {
    {"copy", [](auto& builder) { kiv::KDXBuilder copy(builder); }},
    {"assign", [](auto& builder) { builder = kOtherBuilder; }},
    {"pushObject", [](auto& builder) { builder.pushObject(kText, kText); }},
    {"pushObject unnamed", [](auto& builder) { builder.pushObject(kText); }},
    {"pushReplacedObject", [](auto& builder) { builder.pushReplacedObject(kText, kText); }},
    {"pushReplacedObject unnamed", [](auto& builder) { builder.pushReplacedObject(kText); }},
    {"pushRoot", [](auto& builder) { builder.pushRoot("/a/b:c/d/" + kText + "/f/g:h"); }},
    {"popObject", [](auto& builder) { builder.popObject(); }},
    {"popAll", [](auto& builder) { builder.popAll(); }},
    {"addParam text", [](auto& builder) { builder.addParam(kText, kText); }},
    {"addParam list",
     [](auto& builder) {
         builder.addParam(kText, {kText, kText});
     }},
    {"addParam int", [](auto& builder) { builder.addParam(kText, -1234567890); }},
    {"addParam double", [](auto& builder) { builder.addParam(kText, 0.1); }},
    {"addParam unit", [](auto& builder) { builder.addParam(kText, -1.23456e-300, kText); }},
    {"addAction", [](auto& builder) { builder.addAction(kText); }},
    {"addAction text", [](auto& builder) { builder.addAction(kText, kText); }},
    {"addAction list",
     [](auto& builder) {
         builder.addAction(kText, {kText, kText});
     }},
    {"addAction built", [](auto& builder) { builder.addAction(kAction); }},
    {"addAction empty", [](auto& builder) { builder.addAction("  "); }},
    {"getKDX", [](auto& builder) { builder.getKDX(); }},
};

const std::vector<BuilderCall<kiv::ActionBuilder>> kActionCalls = {
    {"construct action", [](auto&) { kiv::ActionBuilder action(kText); }},
    {"copy action", [](auto& action) { kiv::ActionBuilder copy(action); }},
    {"assign action", [](auto& action) { action = kAction; }},
    {"addParam of action", [](auto& action) { action.addParam(kText, kText + ",,"); }},
    {"addParam without name", [](auto& action) { action.addParam(kText); }},
    {"addParam with empty name", [](auto& action) { action.addParam("", kText); }},
    {"getKDX of action", [](auto& action) { action.getKDX(); }},
};

template <typename Read>
void failEachReading(const char* operation, const Read& read) {
    const kiv::StringMapMap start{{"/A path that the map held before", {{"p", "1"}}}};
    kiv::StringMapMap all = start;
    read(all);
    failEach(operation, start, read, [&](kiv::StringMapMap& map) {
        for (const auto& [path, parameters] : map)
            for (const auto& [name, value] : parameters)
                EXPECT_EQ(value, all.at(path).at(name)) << path << ' ' << name;
        read(map);
        EXPECT_EQ(dump(map), dump(all));
    });
}

template <typename Search>
void failEachSearch(const char* operation, const Search& search) {
    const auto found = [&search](kiv::ObjectKDXParser& parser) {
        search(parser);
        return std::make_pair(parser.getResults(), parser.getTypeResults());
    };
    const kiv::ObjectKDXParser start(kLines);
    kiv::ObjectKDXParser done(start);
    const auto expected = found(done);
    failEach(operation, start, search,
             [&](kiv::ObjectKDXParser& parser) { EXPECT_EQ(found(parser), expected); });
    failEach(
        "copy, assign and move a parser", done,
        [](kiv::ObjectKDXParser& parser) {
            kiv::ObjectKDXParser copy(parser);
            copy = parser;
            kiv::ObjectKDXParser moved(std::move(copy));
            copy = std::move(moved);
        },
        [&](kiv::ObjectKDXParser& parser) {
            EXPECT_EQ(std::make_pair(parser.getResults(), parser.getTypeResults()), expected);
        });
}

void failEachOfWalk(const Lines& lines) {
    const auto walk = [](EventRecorder& parser) {
        try {
            parser.parse();
        } catch (const kiv::data::invalid&) {  // a line at the end is no KDX
        }
    };
    EventRecorder all(lines);
    walk(all);
    failEach("parse", EventRecorder(lines), walk, [&](EventRecorder& parser) {
        EXPECT_EQ(all.events.compare(0, parser.events.size(), parser.events), 0);
        parser.events.clear();
        walk(parser);
        EXPECT_EQ(parser.events, all.events);
    });
}

void failEachOfParser() {
    failEach(
        "construct, copy, assign and fill a parser", EventRecorder({kText}),
        [](EventRecorder& parser) {
            kiv::MiniKDXParser built(kLines);
            kiv::MiniKDXParser copy(built);
            copy = parser;
            parser.setCommands(kLines);
        },
        [](EventRecorder& parser) {
            parser.setCommands({"A:"});
            parser.parse();
            EXPECT_EQ(parser.events, "0 newObject A|\n");
        });
}

template <typename Write>
void failEachWriting(const char* operation, const Write& write) {
    const std::string start = "what was there before";
    std::string all = start;
    write(all);
    failEach(operation, start, write,
             [&](std::string& text) { EXPECT_EQ(all.compare(0, text.size(), text), 0); });
}

std::string filled(const std::string& text) {
    return kiv::UserMsg(kText + "%1", nullptr).arg(text);
}

bool comesFirst(const std::string& left, const std::string& right) {
    kiv::KDXPath path(left);
    const kiv::KDXPath other(right);
    path = other;
    return kiv::KDXPath(left) < path;
}

std::string assignedMessage() {
    kiv::data::invalid error(kText, kText, kText, kiv::errorTypeFailure);
    error = kiv::data::invalid("a", "b", kText + '!', kiv::errorTypeFailure);
    const kiv::data::invalid copy(error);
    const kiv::internal::error other(kText, kText, kText, kiv::errorTypeFailure);
    return copy.message() + kiv::KDXToStringMapMap::Except(other.className()).message();
}

}  // namespace

TEST(AllocationFailure, leavesBuildersUnchanged) {
    kiv::KDXBuilder inside;
    inside.addAction("go");
    inside.pushRoot("/a/b:c/d/e/f/g/h/i");
    for (const auto& operation : kBuilderCalls)
        for (const auto& start : {kiv::KDXBuilder(), inside}) failEach(operation, start);
    for (const auto& operation : kActionCalls)
        for (const auto& start : {kiv::ActionBuilder("a"), kAction}) failEach(operation, start);
    failEach("construct builder", [] { return wholeText(kiv::KDXBuilder("/a/b" + kText)); });
    failEach("clean a value", [] {
        kiv::CleanKDXParamString value(kText + "\\\\");
        const kiv::CleanKDXParamString copy(value);
        value = copy;
        return value.str();
    });
}

TEST(AllocationFailure, leavesReadersUsableAndWhatWasReadInPlace) {
    using Reader = kiv::KDXToStringMapMap;
    failEachReading("read a text", [](auto& map) { Reader::convert(kDocument, map); });
    failEachReading("read lines", [](auto& map) { Reader::convert(kLines, map, kTypes); });
    failEachReading("construct from a text",
                    [](auto& map) { Reader(kDocument, map, kTypes, true); });
    failEachReading("construct from lines", [](auto& map) {
        const Reader reader(kLines, map);
        const Reader copy(reader);
    });
    failEachOfWalk(kLines);
    failEachOfWalk(linesOf(kBroken));
    failEachOfParser();
    failEachSearch("search by name", [](auto& parser) {
        parser.parseForObject("and a long name for the same object", -1);
    });
    failEachSearch("search by type", [](auto& parser) {
        parser.parseForObjectsByType("Another nested object without a name", 0,
                                     "A long type of an object");
    });
}

TEST(AllocationFailure, leavesThePartThatWasWritten) {
    kiv::StringMapMap map;
    kiv::KDXToStringMapMap::convert(kDocument, map);
    map["/A long type of an object!"]["because the order of bytes is not path order"];
    using Writer = kiv::StringMapMapToKDX;
    failEachWriting("write", [&](std::string& out) { Writer::convert(map, out); });
    failEachWriting("write with a mark", [&](std::string& out) {
        Writer::convert(std::prev(map.end())->first, map, out, {4, false, false});
    });
    failEachWriting("construct a writer", [&](std::string& out) { Writer("/x", map, out); });
}

TEST(AllocationFailure, leavesFreeFunctionsUsable) {
    using namespace kiv::StringUtilities;
    failEach("determineLineType", [] {
        std::string first;
        std::string second;
        kiv::MiniKDXParser::determineLineType(kLines[4], first, second);
        kiv::MiniKDXParser::determineLineType(second, second, first);
        return first + second;
    });
    failEach("removeComment", [] { return kiv::KDXFormatting::removeComment(kLines[4]); });
    failEach("indentKDX", [] { return kiv::KDXFormatting::indentKDX(kLines); });
    failEach("extract", [] {
        return kiv::ExtractActionOrStateFromKDX::extractActionOrStateFromKDX(kDocument);
    });
    failEach("replaceSubstring", [] { return replaceSubstring(kText, " ", kText); });
    failEach("whitespace", [] { return removeWhitespace(kText) + simplifyWhitespace(kText); });
    failEach("stringToVector", [] { return stringToVector(kDocument, '\n'); });
    failEach("vectorToOneLineString", [] { return vectorToOneLineString(kLines); });
    failEach("a path", [] { return kiv::KDXPath("/a/b:c/" + kText).getSubPath(0, 3); });
    failEach("order of paths", [] { return comesFirst("/a/b:c/" + kText, kText); });
    failEach("a message", [] { return filled(kText); });
    failEach("a number in a message",
             [] { return std::string(kiv::SystemMsg(kText + "%1").arg(1)); });
    failEach("errors", assignedMessage);
}

TEST(AllocationFailure, wasInjectedEverywhere) {
    std::cout << injectedFailures << " allocations failed\n";
    EXPECT_GT(injectedFailures, 500U);
}
