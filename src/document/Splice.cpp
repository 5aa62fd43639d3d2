#include "document/Splice.h"

#include <algorithm>
#include <cstddef>

namespace kiv::detail {
namespace {

/// Bytes between two edits.
struct Kept {
    std::size_t from = 0;
    std::size_t to = 0;
    std::size_t length = 0;
};

std::vector<Kept> keptBy(const std::vector<KDXTextEdit>& edits, std::size_t textSize) {
    std::vector<Kept> runs(1);
    for (const KDXTextEdit& edit : edits) {
        Kept& before = runs.back();
        before.length = edit.offset - before.from;
        runs.push_back(
            {edit.offset + edit.length, before.to + before.length + edit.replacement.size(), 0});
    }
    runs.back().length = textSize - runs.back().from;
    return runs;
}

}  // namespace

void splice(std::string& text, const std::vector<KDXTextEdit>& edits) {
    const std::vector<Kept> runs = keptBy(edits, text.size());
    const std::size_t size = runs.back().to + runs.back().length;
    text.resize(std::max(size, text.size()));
    char* const bytes = text.data();
    // What goes forward moves last, the last of it first: no run then comes to lie on one that has
    // not moved yet.
    for (const Kept& run : runs)
        if (run.to < run.from) std::copy_n(bytes + run.from, run.length, bytes + run.to);
    for (auto run = runs.rbegin(); run != runs.rend(); ++run)
        if (run->to > run->from)
            std::copy_backward(bytes + run->from, bytes + run->from + run->length,
                               bytes + run->to + run->length);
    for (std::size_t i = 0; i < edits.size(); ++i)
        edits[i].replacement.copy(bytes + runs[i].to + runs[i].length, std::string::npos);
    text.resize(size);
}

}  // namespace kiv::detail
