#pragma once

#include <kiv/KDXCheck.h>

#include <cstddef>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "check/CheckRules.h"

namespace kiv::detail {

/// What there is to say about a place where a rule is broken.
struct Finding {
    KDXPlace begin;
    KDXPlace end;
    std::string message;
    std::optional<KDXPlace> reference;
    std::optional<KDXCheck::Fix> fix;
};

/// Gathers the problems of a text: those of the wanted rules, and of each severity those that stand
/// first, up to a limit.
class ProblemList {
public:
    ProblemList(const RuleSet& wantedRules, std::size_t maxProblems)
        : wanted(wantedRules), limit(maxProblems) {}

    bool wants(CheckRule rule) const { return wanted[indexOf(rule)]; }

    /// From now on, the warnings among these rules are passed over, and no others.
    void ignore(const RuleSet& rules) { ignored = rules; }

    /// Counts a problem, and keeps it as long as it may be among the first. `describe` makes its
    /// Finding.
    template <typename Describe>
    void add(CheckRule rule, Describe describe) {
        if (counts(rule)) keep(rule, describe());
    }

    /// The problems in the order of their places. The list is used up.
    KDXCheck::Report take();

private:
    using Problems = std::vector<KDXCheck::Problem>;

    bool counts(CheckRule rule) const;
    void keep(CheckRule rule, Finding finding);
    void sort(Problems& problems) const;

    RuleSet wanted;
    RuleSet ignored;
    std::size_t limit;
    Problems errors;
    Problems warnings;
    std::size_t errorCount = 0;  // also of those that were not kept
    std::size_t warningCount = 0;
};

}  // namespace kiv::detail
