#include "parser/TextMarks.h"

#ifdef __SSE2__

#include <immintrin.h>

namespace kiv::detail {
namespace {

/// What a block is marked with.
struct BlockMarks {
    std::uint64_t feeds = 0;
    std::uint64_t spaces = 0;
    std::uint64_t words = 0;
    std::uint64_t hashes = 0;

    void storeIn(StretchMarks& marks, std::size_t block) const {
        marks.feeds.set(block, feeds);
        marks.spaces.set(block, spaces);
        marks.words.set(block, words);
        marks.hashes.set(block, hashes);
    }
};

void markBySixteen(const char* text, std::size_t first, std::size_t count, StretchMarks& marks) {
    for (std::size_t block = first; block < first + count; ++block, text += Marks::kBlock) {
        BlockMarks found;
        for (unsigned i = 0; i < Marks::kBlock; i += 16) {
            const ByteBlock bytes = blockAt(text + i);
            found.feeds |= std::uint64_t{maskOf(equal(bytes, '\n'))} << i;
            found.spaces |= std::uint64_t{maskOf(equal(bytes, ' '))} << i;
            found.words |= std::uint64_t{maskOf(wordCharacters(bytes))} << i;
            found.hashes |= std::uint64_t{maskOf(equal(bytes, '#'))} << i;
        }
        found.storeIn(marks, block);
    }
}

// A character is in a set when the entries for its lower and its upper half have a bit in common.
// Upper halves with the same lower ones share a bit, of which there are eight.
struct HalfTables {
    std::array<std::uint8_t, 16> lower{};
    std::array<std::uint8_t, 16> upper{};
};

/// Which of the characters with an upper half are in a set, a bit for each lower half.
constexpr unsigned rowOf(const CharacterTable& set, std::size_t upper) {
    unsigned row = 0;
    for (std::size_t i = 0; i < 16; ++i) row |= set[16 * upper + i] ? 1U << i : 0U;
    return row;
}

constexpr HalfTables halfTablesOf(const CharacterTable& set) {
    HalfTables tables;
    unsigned bit = 1;
    for (std::size_t upper = 0; upper < 16; ++upper) {
        const unsigned row = rowOf(set, upper);
        std::size_t same = 0;
        while (rowOf(set, same) != row) ++same;
        tables.upper[upper] = tables.upper[same];
        if (row == 0 || same < upper) continue;
        tables.upper[upper] = static_cast<std::uint8_t>(bit);
        for (std::size_t i = 0; i < 16; ++i)
            tables.lower[i] = static_cast<std::uint8_t>(tables.lower[i] | (row >> i & 1U) * bit);
        bit <<= 1U;
    }
    return tables;
}

constexpr HalfTables kWordHalves = halfTablesOf(kWordCharacters);

/// A block in two halves of 32 bytes.
struct WideBlock {
    __m256i first;
    __m256i last;
};

[[gnu::target("avx2")]] inline std::uint64_t wideMaskOf(__m256i first, __m256i last) {
    return static_cast<std::uint32_t>(_mm256_movemask_epi8(first)) |
           std::uint64_t{static_cast<std::uint32_t>(_mm256_movemask_epi8(last))} << 32U;
}

[[gnu::target("avx2")]] inline std::uint64_t equal(const WideBlock& block, char c) {
    const __m256i wanted = _mm256_set1_epi8(c);
    return wideMaskOf(_mm256_cmpeq_epi8(block.first, wanted),
                      _mm256_cmpeq_epi8(block.last, wanted));
}

[[gnu::target("avx2")]] inline __m256i tableOf(const std::array<std::uint8_t, 16>& entries) {
    return _mm256_broadcastsi128_si256(
        _mm_loadu_si128(reinterpret_cast<const __m128i*>(entries.data())));
}

/// Where the bytes are in no set that the tables tell.
[[gnu::target("avx2")]] inline __m256i notIn(__m256i lower, __m256i upper, __m256i bytes) {
    const __m256i half = _mm256_set1_epi8(15);
    const __m256i upperHalves = _mm256_and_si256(_mm256_srli_epi16(bytes, 4), half);
    const __m256i common =
        _mm256_and_si256(_mm256_shuffle_epi8(lower, _mm256_and_si256(bytes, half)),
                         _mm256_shuffle_epi8(upper, upperHalves));
    return _mm256_cmpeq_epi8(common, _mm256_setzero_si256());
}

[[gnu::target("avx2")]] void markByThirtyTwo(const char* text, std::size_t first, std::size_t count,
                                             StretchMarks& marks) {
    const __m256i lower = tableOf(kWordHalves.lower);
    const __m256i upper = tableOf(kWordHalves.upper);
    for (std::size_t i = first; i < first + count; ++i, text += Marks::kBlock) {
        const auto* bytes = reinterpret_cast<const __m256i*>(text);
        const WideBlock block{_mm256_loadu_si256(bytes), _mm256_loadu_si256(bytes + 1)};
        const std::uint64_t words =
            ~wideMaskOf(notIn(lower, upper, block.first), notIn(lower, upper, block.last));
        BlockMarks{equal(block, '\n'), equal(block, ' '), words, equal(block, '#')}.storeIn(marks,
                                                                                            i);
    }
}

}  // namespace

MarkBlocks narrowMarkBlocks() {
    return markBySixteen;
}

MarkBlocks widestMarkBlocks() {
    return __builtin_cpu_supports("avx2") ? markByThirtyTwo : markBySixteen;
}

void TextMarks::read(std::string_view text) {
    static const MarkBlocks markBlocks = widestMarkBlocks();
    constexpr std::size_t kLimit = Marks::kBlocks * Marks::kBlock;
    begin = text.data();
    size = std::min(text.size(), kLimit);
    const std::size_t blocks = size / Marks::kBlock;
    std::array<char, 2 * Marks::kBlock> behind{};
    behind.fill('\n');
    text.substr(blocks * Marks::kBlock, size % Marks::kBlock).copy(behind.data(), behind.size());
    markBlocks(begin, 0, blocks, marks);
    markBlocks(behind.data(), blocks, 2, marks);
    lastWindow = begin + (text.size() == size ? size : size - Marks::kBlock);
}

}  // namespace kiv::detail

#endif
