// Changes texts line by line, so that most of what a fuzzer comes up with stays KDX: lines are
// added, left out, repeated, moved, and put into an object. Every other time the fuzzer changes
// bytes, as it does by itself.

#include <algorithm>
#include <cstdint>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include "Generate.h"

extern "C" std::size_t LLVMFuzzerMutate(std::uint8_t* data, std::size_t size, std::size_t maxSize);
extern "C" std::size_t LLVMFuzzerCustomMutator(std::uint8_t* data, std::size_t size,
                                               std::size_t maxSize, unsigned seed);

namespace {

using Lines = std::vector<std::string>;

/// Each with its line feed, but for the last.
Lines linesOf(std::string_view text) {
    Lines lines;
    while (!text.empty()) {
        const std::size_t length = std::min(text.find('\n'), text.size() - 1) + 1;
        lines.emplace_back(text.substr(0, length));
        text.remove_prefix(length);
    }
    return lines;
}

class Mutation {
public:
    Mutation(std::string_view text, unsigned seed) : random(seed), lines(linesOf(text)) {}

    std::string apply() {
        const auto first = lines.begin() + below(size() + 1);
        const auto last = first + below(lines.end() - first + 1);
        switch (below(5)) {
            case 0: return joined({lines.begin(), first}, generated(), {first, lines.end()});
            case 1: return joined({lines.begin(), first}, {}, {last, lines.end()});
            case 2: return joined({lines.begin(), last}, {first, last}, {last, lines.end()});
            case 3: return joined({first, last}, {lines.begin(), first}, {last, lines.end()});
            default:
                return joined({lines.begin(), first}, inObject({first, last}), {last, lines.end()});
        }
    }

private:
    std::ptrdiff_t size() const { return static_cast<std::ptrdiff_t>(lines.size()); }

    /// A number below the limit, which is positive.
    std::ptrdiff_t below(std::ptrdiff_t limit) {
        return static_cast<std::ptrdiff_t>(random() % static_cast<std::uint64_t>(limit));
    }

    Lines generated() { return linesOf(fuzz::generateText(random())); }

    static Lines inObject(Lines content) {
        content.insert(content.begin(), "A: b\n");
        content.push_back("END\n");
        return content;
    }

    static std::string joined(const Lines& before, const Lines& between, const Lines& behind) {
        std::string text;
        for (const Lines* part : {&before, &between, &behind})
            for (const std::string& line : *part) text += line;
        return text;
    }

    std::mt19937_64 random;
    Lines lines;
};

}  // namespace

std::size_t LLVMFuzzerCustomMutator(std::uint8_t* data, std::size_t size, std::size_t maxSize,
                                    unsigned seed) {
    if (seed % 2 == 0) return LLVMFuzzerMutate(data, size, maxSize);
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    const std::string mutated = Mutation(text, seed).apply();
    return mutated.copy(reinterpret_cast<char*>(data), maxSize);
}
