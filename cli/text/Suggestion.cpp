#include "Suggestion.h"

#include <algorithm>
#include <cstddef>

namespace kdx {
namespace {

constexpr std::size_t kShortest = 3;  // any "-x" is close to any other
constexpr std::size_t kLongest = 64;

using Row = std::vector<std::size_t>;

/// How many letters have to be added, removed, replaced or swapped with their neighbour to make one
/// word of the other.
std::size_t distance(std::string_view a, std::string_view b) {
    Row beforeLast(b.size() + 1);
    Row last(b.size() + 1);
    Row row(b.size() + 1);
    for (std::size_t j = 0; j <= b.size(); ++j) row[j] = j;
    for (std::size_t i = 1; i <= a.size(); ++i) {
        beforeLast.swap(last);
        last.swap(row);
        row[0] = i;
        for (std::size_t j = 1; j <= b.size(); ++j) {
            const std::size_t replaced = last[j - 1] + (a[i - 1] == b[j - 1] ? 0 : 1);
            row[j] = std::min({replaced, last[j] + 1, row[j - 1] + 1});
            const bool swapped = i > 1 && j > 1 && a[i - 1] == b[j - 2] && a[i - 2] == b[j - 1];
            if (swapped) row[j] = std::min(row[j], beforeLast[j - 2] + 1);
        }
    }
    return row[b.size()];
}

}  // namespace

std::string suggestion(std::string_view word, const std::vector<std::string>& known) {
    if (word.size() < kShortest || word.size() > kLongest) return {};
    std::size_t least = 1 + word.size() / 4;
    const std::string* closest = nullptr;
    for (const std::string& candidate : known) {
        const std::size_t differences = distance(word, candidate);
        if (differences > least || (closest != nullptr && differences == least)) continue;
        least = differences;
        closest = &candidate;
    }
    return closest == nullptr ? std::string() : "; did you mean '" + *closest + "'?";
}

}  // namespace kdx
