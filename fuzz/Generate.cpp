#include "Generate.h"

#include <array>
#include <random>
#include <string_view>

namespace fuzz {
namespace {

/// What lines are put together from, and whole lines. An empty one makes lines end early.
constexpr std::array<std::string_view, 55> kPieces = {
    "x=1",    "x = 1",   "A:",      "A: s1",  "A : A",   "END",      "END # A:", "END # A:s1",
    "> run ", "!a ",     "$b ",     "# c",    "#",       " # c",     "\\",       "\\ ",
    "\\\t",   "\\\r",    "\\#",     " \\ #",  "\t",      " ",        "  ",       "\r",
    "\v",     "a b",     "a  b",    "q=C:\\", "en",      "EN",       "D",        "end",
    "=",      ":",       "/",       "-",      "&",       "\xC3",     "\xC3\xA4", "\xEF\xBB\xBF",
    "\\#b",   "# C:\\",  "x=a#",    "y= ",    "x=a\\#b", "",         ",",        "=5",
    "x=",     "# c\\\t", "\\\t# c", "d\\ #",  "S:C:\\",  "# S:C:\\", "END #"};

constexpr std::array<std::string_view, 6> kWholeLines = {"A:",  "B: b", "END",
                                                         "END", "x=1",  "  y = 2  # c"};

class Generator {
public:
    explicit Generator(std::uint64_t seed) : random(seed) {}

    std::string text() {
        if (below(16) == 0) result += "\xEF\xBB\xBF";
        const char* const lineEnd = below(3) == 0 ? "\r\n" : "\n";
        for (std::size_t lines = below(12); lines > 0; --lines) {
            addLine();
            result += below(8) == 0 ? "\\\n" : below(16) == 0 ? "\n" : lineEnd;
        }
        if (below(3) == 0) addLine();
        return std::move(result);
    }

private:
    void addLine() {
        result.append(below(3), ' ');
        if (below(3) != 0) result += kWholeLines[below(kWholeLines.size())];
        if (below(2) == 0) return;
        for (std::size_t pieces = below(4); pieces > 0; --pieces)
            result += kPieces[below(kPieces.size())];
        if (below(100) == 0) result += '\0';
    }

    std::size_t below(std::size_t limit) { return static_cast<std::size_t>(random() % limit); }

    std::mt19937_64 random;
    std::string result;
};

}  // namespace

std::string generateText(std::uint64_t seed) {
    return Generator(seed).text();
}

}  // namespace fuzz
