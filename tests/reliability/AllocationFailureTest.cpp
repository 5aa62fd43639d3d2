// Makes every single allocation of every public operation fail, one after the other.

#include <iostream>
#include <new>

#include "support/Allocations.h"
#include "support/EveryOperation.h"

namespace {

std::size_t injectedFailures = 0;

std::string textOf(const std::string& text) {
    return text;
}
std::string textOf(const kiv::ActionBuilder& builder) {
    return builder.getKDX();
}
std::string textOf(kiv::KDXBuilder builder) {
    builder.popAll();
    return builder.getKDX();
}

std::string textOf(kiv::ObjectKDXParser parser) {
    return joined(parser.getCommands()) + foundBy(parser);
}

std::string textOf(const kiv::KDXDocument& document) {
    return document.text();
}

/// Makes the call on copies of `start`, once for each allocation that it needs, which then fails:
/// that must leak nothing, leave the state as it was, and not hinder the same call afterwards.
template <typename State, typename Call>
void sweep(Call call, const State& start) {
    State done(start);
    call(done);
    for (std::size_t n = 1;; ++n, ++injectedFailures) {
        SCOPED_TRACE("allocation " + std::to_string(n) + " on the way to " + textOf(done));
        const std::ptrdiff_t liveBefore = allocations::live;
        {
            State state(start);
            allocations::untilFailure = n;
            try {
                call(state);
                if (std::exchange(allocations::untilFailure, 0) != 0) return;  // there are fewer
            } catch (const std::bad_alloc&) {
                EXPECT_EQ(textOf(state), textOf(start));
                call(state);
            }
            EXPECT_EQ(textOf(state), textOf(done));
        }
        EXPECT_EQ(allocations::live, liveBefore);
    }
}

using List = std::vector<std::string>;
const std::string kText = " some text that is longer than a small string ";
const kiv::KDXBuilder kOther("/Some other object of a long type:and a name/inside it");
const kiv::ActionBuilder kAction("an action with a name that is long");

using BuilderCall = void (*)(kiv::KDXBuilder&);
const std::vector<BuilderCall> kCallsInObject = {
    [](auto& builder) { builder = kOther; },
    [](auto& builder) { builder.pushObject(kText, kText); },
    [](auto& builder) { builder.pushReplacedObject(kText, kText); },
    [](auto& builder) { builder.pushRoot("/a/b:c/d/" + kText + "/f/g:h"); },
    [](auto& builder) { builder.popObject(); },
    [](auto& builder) { builder.popAll(); },
    [](auto& builder) { builder.addParam(kText, kText); },
    [](auto& builder) { builder.addParam(kText, List(2, kText)); },
    [](auto& builder) { builder.addParam(kText, -1234567890); },
    [](auto& builder) { builder.addParam(kText, -1.23456e-300, kText); },
};
const std::vector<BuilderCall> kCallsAtRoot = {
    [](auto& builder) { builder.addAction(kText); },
    [](auto& builder) { builder.addAction(kText, List(2, kText)); },
    [](auto& builder) { builder.addAction(kAction); },
};
using Document = kiv::KDXDocument;
Document::Node nodeIn(const Document& document, std::string_view text) {
    return document.nodeAt(document.text().find(text));
}
const std::vector<void (*)(Document&)> kEdits = {
    [](auto& document) { document = Document(kText + kText); },
    [](auto& document) { document.setValue(nodeIn(document, "y ="), "a\\#b"); },
    [](auto& document) { document.setName(nodeIn(document, "A:"), "another name"); },
    [](auto& document) { document.setComment(nodeIn(document, "y ="), ""); },
    [](auto& document) { document.setText(nodeIn(document, ">"), "> another action"); },
    [](auto& document) { document.addObject(Document::lastIn(document.root()), "B", "b"); },
    [](auto& document) { document.addText(Document::lastIn(document.root()), "x=1\ny=2"); },
    [](auto& document) { document.remove(nodeIn(document, "A:")); },
    [](auto& document) {
        document.move(nodeIn(document, "y ="), Document::lastIn(document.root()));
    },
    [](auto& document) { document.set(kiv::readPath("/A:a name/B/C"), "x", "1"); },
    [](auto& document) { document.removeParameters(kiv::readPath("/**"), "y"); },
};
const std::vector<void (*)(kiv::ActionBuilder&)> kActionCalls = {
    [](auto& action) { action = kAction; },
    [](auto& action) { action.addParam(kText, kText + ",,"); },
    [](auto& action) { action.addParam(kText); },
};

}  // namespace

TEST(AllocationFailure, leavesBuildersUnchanged) {
    for (const auto call : kCallsInObject) sweep(call, kiv::KDXBuilder("/a/b:c/d/e/f/g/h/i"));
    for (const auto call : kCallsAtRoot) sweep(call, kiv::KDXBuilder());
    for (const auto call : kActionCalls) sweep(call, kiv::ActionBuilder("a"));
}

TEST(AllocationFailure, leavesDocumentsUnchanged) {
    const Document start(
        "A: a name\n  # above\n  y = 1 # a comment\nEND # A:a name\n> an action\nz = open\\");
    for (const auto edit : kEdits) sweep(edit, start);
    sweep(
        [](Document& document) {
            Document other("B: b\n    # above\n    z = 1\nEND\n");
            const std::string text = other.text();
            const auto node = nodeIn(other, "z =");
            try {
                document.moveFrom(other, node, Document::firstIn(nodeIn(document, "A:")));
            } catch (const std::bad_alloc&) {
                EXPECT_TRUE(other.contains(node));
                throw;
            }
        },
        start);
}

TEST(AllocationFailure, leavesTheSourceOfAMoveUnchanged) {
    kiv::ObjectKDXParser source(everyOperation::kLines);
    source.parseForObjectsByType("A long type of an object", -1, "");
    using Parser = kiv::ObjectKDXParser;
    sweep([](Parser& parser) { const Parser target(std::move(parser)); }, source);
    sweep([](Parser& parser) { Parser({"x"}) = std::move(parser); }, source);
}

TEST(AllocationFailure, leavesInTheMapWhatWasRead) {
    std::size_t read = 0;
    for (std::size_t n = 1;; ++n, ++injectedFailures) {
        kiv::StringMapMap map;
        allocations::untilFailure = n;
        try {
            kiv::KDXToStringMapMap::convert(everyOperation::kDocument, map);
            if (std::exchange(allocations::untilFailure, 0) != 0) break;
        } catch (const std::bad_alloc&) {
            EXPECT_GE(dump(map).size(), read) << "allocation " << n;
        }
        read = dump(map).size();
    }
    EXPECT_GT(read, 100U);
}

TEST(AllocationFailure, leaksNothingAndHindersNoLaterCall) {
    for (const auto operation : everyOperation::kOperations)
        sweep([operation](std::string& result) { result = operation(); }, std::string());
    std::cout << injectedFailures << " allocations failed\n";
    EXPECT_GT(injectedFailures, 300U);
}
