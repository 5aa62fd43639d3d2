// Makes every single allocation of every public operation fail, one after the other.

#include <gtest/gtest.h>
#include <kiv/ActionBuilder.h>
#include <kiv/KDXBuilder.h>

#include <cstdlib>
#include <functional>
#include <iostream>
#include <new>
#include <utility>
#include <vector>

#include "support/EveryOperation.h"

namespace {

std::size_t allocationsUntilFailure = 0;  // 0: none fails
std::ptrdiff_t liveAllocations = 0;
std::size_t injectedFailures = 0;

}  // namespace

// Inlined, these would look to g++ like the wrong ends of a plain malloc() or new.
[[gnu::noinline]] void* operator new(std::size_t size) {
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

[[gnu::noinline]] void operator delete(void* memory) noexcept {
    if (memory != nullptr) --liveAllocations;
    std::free(memory);
}

[[gnu::noinline]] void operator delete(void* memory, std::size_t /*size*/) noexcept {
    operator delete(memory);
}

namespace {

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

template <typename State>
struct Call {
    const char* name;
    std::function<void(State&)> make;
};

/// @return whether the call on the state, of which allocation number `n` fails, comes that far.
template <typename State>
bool failOne(std::size_t n, const Call<State>& call, State state, const State& done) {
    const std::string before = textOf(state);
    allocationsUntilFailure = n;
    try {
        call.make(state);
        return std::exchange(allocationsUntilFailure, 0) == 0;
    } catch (const std::bad_alloc&) {
        EXPECT_EQ(textOf(state), before);
    }
    call.make(state);
    EXPECT_EQ(textOf(state), textOf(done));
    return true;
}

/// Makes the call on copies of `start`, once for each allocation that it needs, which then fails:
/// that must leak nothing, leave the state as it was, and not hinder the same call afterwards.
template <typename State>
void sweep(const Call<State>& call, const State& start) {
    State done(start);
    call.make(done);
    for (std::size_t n = 1;; ++n) {
        SCOPED_TRACE(call.name + (", allocation " + std::to_string(n)));
        const std::ptrdiff_t liveBefore = liveAllocations;
        if (!failOne(n, call, start, done)) return;
        EXPECT_EQ(liveAllocations, liveBefore);
        ++injectedFailures;
    }
}

using List = std::vector<std::string>;
const std::string kText = " some text that is longer than a small string ";
const kiv::KDXBuilder kOther("/Some other object of a long type:and a name/inside it");
const kiv::ActionBuilder kAction("an action with a name that is long");

const std::vector<Call<kiv::KDXBuilder>> kBuilderCalls = {
    {"assign", [](auto& builder) { builder = kOther; }},
    {"pushObject", [](auto& builder) { builder.pushObject(kText, kText); }},
    {"pushObject unnamed", [](auto& builder) { builder.pushObject(kText); }},
    {"pushReplacedObject", [](auto& builder) { builder.pushReplacedObject(kText, kText); }},
    {"pushReplacedObject unnamed", [](auto& builder) { builder.pushReplacedObject(kText); }},
    {"pushRoot", [](auto& builder) { builder.pushRoot("/a/b:c/d/" + kText + "/f/g:h"); }},
    {"popObject", [](auto& builder) { builder.popObject(); }},
    {"popAll", [](auto& builder) { builder.popAll(); }},
    {"addParam text", [](auto& builder) { builder.addParam(kText, kText); }},
    {"addParam list", [](auto& builder) { builder.addParam(kText, List(2, kText)); }},
    {"addParam int", [](auto& builder) { builder.addParam(kText, -1234567890); }},
    {"addParam unit", [](auto& builder) { builder.addParam(kText, -1.23456e-300, kText); }},
};
const std::vector<Call<kiv::KDXBuilder>> kRootCalls = {
    {"addAction", [](auto& builder) { builder.addAction(kText); }},
    {"addAction text", [](auto& builder) { builder.addAction(kText, kText); }},
    {"addAction list", [](auto& builder) { builder.addAction(kText, List(2, kText)); }},
    {"addAction built", [](auto& builder) { builder.addAction(kAction); }},
};
const std::vector<Call<kiv::ActionBuilder>> kActionCalls = {
    {"assign", [](auto& action) { action = kAction; }},
    {"addParam", [](auto& action) { action.addParam(kText, kText + ",,"); }},
    {"addParam without name", [](auto& action) { action.addParam(kText); }},
};

}  // namespace

TEST(AllocationFailure, leavesBuildersUnchanged) {
    for (const auto& call : kBuilderCalls) sweep(call, kiv::KDXBuilder("/a/b:c/d/e/f/g/h/i"));
    for (const auto& call : kRootCalls) sweep(call, kiv::KDXBuilder());
    for (const auto& call : kActionCalls) sweep(call, kiv::ActionBuilder("a"));
}

TEST(AllocationFailure, leaksNothingAndHindersNoLaterCall) {
    for (const auto& [name, run] : everyOperation::kOperations)
        sweep<std::string>({name, [run = run](std::string& result) { result = run(); }}, "");
    std::cout << injectedFailures << " allocations failed\n";
    EXPECT_GT(injectedFailures, 300U);
}
