// Counts what calls cost, where a place in a map or room in memory is known beforehand.

#include <cstring>
#include <functional>

#include "support/Allocations.h"
#include "support/Library.h"
#include "support/Text.h"

namespace {

std::size_t comparisons = 0;

}  // namespace

/// Of strings; what else a compiler compares by it is little next to those that a hint saves.
extern "C" int memcmp(const void* left, const void* right, std::size_t size) noexcept {
    ++comparisons;
    const auto* const a = static_cast<const unsigned char*>(left);
    const auto* const b = static_cast<const unsigned char*>(right);
    for (std::size_t i = 0; i < size; ++i)
        if (a[i] != b[i]) return a[i] - b[i];
    return 0;
}

namespace {

constexpr std::size_t kCount = 1000;

/// Pieces with a number in place of '@', in order.
std::string numbered(std::string_view piece) {
    std::string text;
    for (std::size_t i = 0; i < kCount; ++i)
        for (const char c : piece)
            text += c == '@' ? std::to_string(kCount + i) : std::string(1, c);
    return text;
}

kiv::StringMapMap mapOf(const std::string& text) {
    kiv::StringMapMap map;
    kiv::KDXToStringMapMap::convert(text, map);
    return map;
}

const std::string kObjects = numbered("T:@\nv=1\nEND\n");
const std::string kParameters = "T:t\n" + numbered("p@=v\n");
const std::vector<std::string> kLines = linesOf(kObjects);
const kiv::StringMapMap kMap = mapOf(kObjects);
const kiv::StringMapMap kUnordered = mapOf(numbered("A:@\nB:b\nEND\nEND\nA:@!\nEND\n"));

std::string written(const kiv::StringMapMap& map) {
    std::string text;
    kiv::StringMapMapToKDX::convert(map, text);
    return text;
}

struct Row {
    const char* name;
    std::size_t mostAllocations;
    std::size_t mostComparisons;
    std::function<std::size_t()> call;
};

const std::vector<Row> kRows = {
    {"read objects", 2010, 5000, [] { return mapOf(kObjects).size(); }},
    {"read parameters", 1010, 5000, [] { return mapOf(kParameters).size(); }},
    {"write", 4, 5000, [] { return written(kMap).size(); }},
    {"write objects out of order", 18, 20000, [] { return written(kUnordered).size(); }},
    {"format", 4, 5000, [] { return kiv::KDXFormatting::formatKDX(kObjects).size(); }},
    {"indent", 2, 5000, [] { return kiv::KDXFormatting::indentKDX(kLines).size(); }},
    {"load", 6, 5000, [] { return kiv::KDXDocument("\n" + kObjects + "#").text().size(); }},
    {"check", 1020, 25000, [] { return kiv::KDXCheck::check(kObjects).problems.size(); }},
};

}  // namespace

TEST(Cost, isAsLittleAsWhatIsKnownBeforehandLetsItBe) {
#ifdef _GLIBCXX_DEBUG
    GTEST_SKIP() << "containers that check themselves compare more";
#endif
    for (const auto& [name, mostAllocations, mostComparisons, call] : kRows) {
        const std::size_t before = allocations::all;
        comparisons = 0;
        call();
        EXPECT_LE(allocations::all - before, mostAllocations) << name;
        EXPECT_LE(comparisons, mostComparisons) << name;
    }
}
