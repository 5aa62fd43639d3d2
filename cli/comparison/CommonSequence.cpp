#include "CommonSequence.h"

#include <algorithm>
#include <limits>
#include <utility>

namespace kdx {
namespace {

using Sequence = std::vector<std::uint32_t>;

constexpr std::size_t kMaxEdits = 256;  // that a search looks ahead
constexpr std::size_t kNowhere = std::numeric_limits<std::size_t>::max();

/// A part of both sequences.
struct Gap {
    Match begin;
    Match end;

    bool isOneSided() const { return begin.before == end.before || begin.after == end.after; }
};

/// The elements that stand exactly once in each part of the gap, in the order of the first one.
std::vector<Match> uniqueMatches(const Sequence& before, const Sequence& after, const Gap& gap) {
    struct Occurrences {
        std::uint32_t before = 0;
        std::uint32_t after = 0;
        std::size_t placeAfter = 0;
    };
    std::uint32_t largest = 0;
    for (const Sequence* sequence : {&before, &after})
        for (const std::uint32_t element : *sequence) largest = std::max(largest, element);
    std::vector<Occurrences> found(std::size_t{largest} + 1);
    for (std::size_t i = gap.begin.before; i < gap.end.before; ++i) ++found[before[i]].before;
    for (std::size_t i = gap.begin.after; i < gap.end.after; ++i) {
        ++found[after[i]].after;
        found[after[i]].placeAfter = i;
    }
    std::vector<Match> matches;
    for (std::size_t i = gap.begin.before; i < gap.end.before; ++i) {
        const Occurrences& element = found[before[i]];
        if (element.before == 1 && element.after == 1) matches.push_back({i, element.placeAfter});
    }
    return matches;
}

/// The longest part of the matches that ascends on the second side, too.
std::vector<Match> longestAscent(const std::vector<Match>& matches) {
    std::vector<std::size_t> lastOfLength;  // the match that ends the lowest ascent of each length
    std::vector<std::size_t> previous(matches.size(), kNowhere);
    const auto isLower = [&](std::size_t index, std::size_t place) {
        return matches[index].after < place;
    };
    for (std::size_t i = 0; i < matches.size(); ++i) {
        const auto replaced =
            std::lower_bound(lastOfLength.begin(), lastOfLength.end(), matches[i].after, isLower);
        if (replaced != lastOfLength.begin()) previous[i] = *(replaced - 1);
        if (replaced == lastOfLength.end())
            lastOfLength.push_back(i);
        else
            *replaced = i;
    }
    std::vector<Match> ascent;
    for (std::size_t i = lastOfLength.empty() ? kNowhere : lastOfLength.back(); i != kNowhere;
         i = previous[i])
        ascent.push_back(matches[i]);
    std::reverse(ascent.begin(), ascent.end());
    return ascent;
}

/// A search for the shortest edit from the beginning of a gap on, edit by edit: how far one comes
/// with so many edits that leave the second side so many elements ahead of the first, or behind.
class EditSearch {
public:
    EditSearch(const Sequence& sequenceBefore, const Sequence& sequenceAfter, const Gap& searched)
        : before(sequenceBefore), after(sequenceAfter), gap(searched) {}

    /// Appends the matches up to where the search ends, and returns that place: the end of the gap,
    /// or the furthest place within the limit.
    Match run(std::vector<Match>& matches) {
        std::size_t edits = 0;
        std::size_t insertions = 0;
        for (;; ++edits) {
            addRow(edits);
            insertions = furthest(edits);
            if (edits == kMaxEdits || isEnd(placeAt(edits, insertions))) break;
        }
        const Match reached = placeAt(edits, insertions);
        appendMatches(matches, edits, insertions);
        return reached;
    }

private:
    /// Where the edit stands before and behind the equal elements that end it; on the first side.
    struct Reach {
        std::size_t begin = kNowhere;
        std::size_t end = kNowhere;
        bool byInsertion = false;
    };

    /// The reach after `edits` of which so many are insertions.
    Reach& at(std::size_t edits, std::size_t insertions) {
        return rows[edits * (edits + 1) / 2 + insertions];
    }

    Match placeAt(std::size_t edits, std::size_t insertions) {
        const std::size_t onBefore = at(edits, insertions).end;
        return {onBefore, behind(onBefore, edits, insertions)};
    }

    /// The place on the second side.
    std::size_t behind(std::size_t onBefore, std::size_t edits, std::size_t insertions) const {
        return onBefore - gap.begin.before + gap.begin.after + 2 * insertions - edits;
    }

    bool isEnd(const Match& place) const {
        return place.before == gap.end.before && place.after == gap.end.after;
    }

    void addRow(std::size_t edits) {
        rows.resize(rows.size() + edits + 1);
        for (std::size_t insertions = 0; insertions <= edits; ++insertions) {
            Reach reach = edited(edits, insertions);
            if (reach.begin == kNowhere) continue;
            reach.end = reach.begin;
            for (std::size_t other = behind(reach.begin, edits, insertions);
                 reach.end < gap.end.before && other < gap.end.after &&
                 before[reach.end] == after[other];
                 ++other)
                ++reach.end;
            at(edits, insertions) = reach;
        }
    }

    /// The better way to a reach: by an insertion or by a deletion; nowhere when neither is left.
    Reach edited(std::size_t edits, std::size_t insertions) {
        if (edits == 0) return {gap.begin.before, kNowhere, false};
        Reach reach;
        if (insertions < edits) {
            const std::size_t from = at(edits - 1, insertions).end;
            if (from != kNowhere && from < gap.end.before) reach.begin = from + 1;
        }
        if (insertions == 0) return reach;
        const std::size_t from = at(edits - 1, insertions - 1).end;
        if (from == kNowhere || behind(from, edits, insertions) > gap.end.after) return reach;
        if (reach.begin == kNowhere || from >= reach.begin) reach = {from, kNowhere, true};
        return reach;
    }

    /// The number of insertions with which the edit has come furthest on both sides together, and
    /// of several such numbers the one nearest to that of the deletions.
    std::size_t furthest(std::size_t edits) {
        std::size_t best = 0;
        std::pair<std::size_t, std::size_t> bestScore;
        for (std::size_t insertions = 0; insertions <= edits; ++insertions) {
            const std::size_t end = at(edits, insertions).end;
            if (end == kNowhere) continue;
            const std::pair score(end + behind(end, edits, insertions),
                                  std::min(insertions, edits - insertions));
            if (score < bestScore) continue;
            best = insertions;
            bestScore = score;
        }
        return best;
    }

    void appendMatches(std::vector<Match>& matches, std::size_t edits, std::size_t insertions) {
        const auto first = static_cast<std::ptrdiff_t>(matches.size());
        for (;; --edits) {
            const Reach& reach = at(edits, insertions);
            for (std::size_t end = reach.end; end > reach.begin; --end)
                matches.push_back({end - 1, behind(end - 1, edits, insertions)});
            if (edits == 0) break;
            if (reach.byInsertion) --insertions;
        }
        std::reverse(matches.begin() + first, matches.end());
    }

    const Sequence& before;
    const Sequence& after;
    const Gap& gap;
    std::vector<Reach> rows;  // of each number of edits, one for each number of insertions
};

class Matcher {
public:
    Matcher(const Sequence& sequenceBefore, const Sequence& sequenceAfter)
        : before(sequenceBefore), after(sequenceAfter) {}

    std::vector<Match> run() {
        Gap all{{0, 0}, {before.size(), after.size()}};
        matchBegin(all);
        const std::size_t same = cutEnd(all);
        for (const Match& anchor : longestAscent(uniqueMatches(before, after, all))) {
            matchGap({all.begin, anchor});
            matches.push_back(anchor);
            all.begin = {anchor.before + 1, anchor.after + 1};
        }
        matchGap(all);
        matchRun(all.end, same);
        return std::move(matches);
    }

private:
    /// Pairs what stands between two pairs.
    void matchGap(Gap gap) {
        matchBegin(gap);
        const std::size_t same = cutEnd(gap);
        while (!gap.isOneSided()) gap.begin = EditSearch(before, after, gap).run(matches);
        matchRun(gap.end, same);
    }

    void matchBegin(Gap& gap) {
        for (; !gap.isOneSided() && before[gap.begin.before] == after[gap.begin.after];
             ++gap.begin.before, ++gap.begin.after)
            matches.push_back(gap.begin);
    }

    /// Leaves out what is the same at the end of the gap, and says how much it is.
    std::size_t cutEnd(Gap& gap) const {
        std::size_t same = 0;
        for (; !gap.isOneSided() && before[gap.end.before - 1] == after[gap.end.after - 1];
             ++same) {
            --gap.end.before;
            --gap.end.after;
        }
        return same;
    }

    void matchRun(const Match& begin, std::size_t length) {
        for (std::size_t i = 0; i < length; ++i)
            matches.push_back({begin.before + i, begin.after + i});
    }

    const Sequence& before;
    const Sequence& after;
    std::vector<Match> matches;
};

}  // namespace

std::vector<Match> commonSequence(const std::vector<std::uint32_t>& before,
                                  const std::vector<std::uint32_t>& after) {
    return Matcher(before, after).run();
}

}  // namespace kdx
