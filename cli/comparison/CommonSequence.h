#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace kdx {

/// The places of an element in two sequences.
struct Match {
    std::size_t before = 0;
    std::size_t after = 0;
};

/// Pairs equal elements of two sequences, in ascending order on both sides. The elements are small
/// numbers: memory is taken for the largest.
///
/// Takes n log n time for whatever sequences, and so does not promise the longest pairing. What
/// stands on both sides exactly once is paired first. Between those pairs the shortest edit is
/// searched for a limited number of insertions and deletions ahead; where more is different, the
/// edit that has come furthest is settled for, and the search goes on behind it.
std::vector<Match> commonSequence(const std::vector<std::uint32_t>& before,
                                  const std::vector<std::uint32_t>& after);

}  // namespace kdx
