#pragma once

#include <kiv/KDXCheck.h>

#include <cstddef>
#include <optional>
#include <string>
#include <utility>

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

/// Gathers the problems of a text: those of the wanted rules, up to a limit.
class ProblemList {
public:
    ProblemList(const RuleSet& wantedRules, std::size_t maxProblems)
        : wanted(wantedRules), limit(maxProblems) {}

    bool wants(CheckRule rule) const { return wanted[indexOf(rule)]; }

    /// From now on, the warnings among these rules are passed over, and no others.
    void ignore(const RuleSet& rules) { ignored = rules; }

    /// Counts a problem, and keeps it if the limit allows. `describe` makes its Finding; it is
    /// called for a problem that is kept.
    template <typename Describe>
    void add(CheckRule rule, Describe describe) {
        if (counts(rule)) keep(rule, describe());
    }

    /// The problems in the order of their places. The list is used up.
    KDXCheck::Report take();

private:
    bool counts(CheckRule rule);
    void keep(CheckRule rule, Finding finding);

    RuleSet wanted;
    RuleSet ignored;
    std::size_t limit;
    KDXCheck::Report report;
};

}  // namespace kiv::detail
