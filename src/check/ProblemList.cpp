#include "check/ProblemList.h"

#include <algorithm>
#include <iterator>

namespace kiv::detail {
namespace {

bool comesBefore(const KDXCheck::Problem& a, const KDXCheck::Problem& b) {
    return a.begin.offset < b.begin.offset;
}

bool isError(CheckRule rule) {
    return descriptionOf(rule).severity == KDXCheck::Severity::error;
}

}  // namespace

bool ProblemList::counts(CheckRule rule) const {
    return wants(rule) && (isError(rule) || !ignored[indexOf(rule)]);
}

/// Problems are found nearly in order: only when there are twice as many as wanted, it is worth the
/// time to see which are the first.
void ProblemList::keep(CheckRule rule, Finding finding) {
    const KDXCheck::Rule& description = descriptionOf(rule);
    Problems& problems = isError(rule) ? errors : warnings;
    ++(isError(rule) ? errorCount : warningCount);
    problems.push_back({description.name, description.severity, finding.begin, finding.end,
                        std::move(finding.message), finding.reference, std::move(finding.fix)});
    if (problems.size() / 2 >= limit) sort(problems);
}

/// Leaves those that stand first, in their order.
void ProblemList::sort(Problems& problems) const {
    if (!std::is_sorted(problems.begin(), problems.end(), comesBefore))
        std::stable_sort(problems.begin(), problems.end(), comesBefore);
    if (problems.size() > limit)
        problems.erase(problems.begin() + static_cast<std::ptrdiff_t>(limit), problems.end());
}

KDXCheck::Report ProblemList::take() {
    sort(errors);
    sort(warnings);
    Problems all;
    all.reserve(errors.size() + warnings.size());
    std::merge(std::make_move_iterator(errors.begin()), std::make_move_iterator(errors.end()),
               std::make_move_iterator(warnings.begin()), std::make_move_iterator(warnings.end()),
               std::back_inserter(all), comesBefore);
    return {std::move(all), errorCount, warningCount};
}

}  // namespace kiv::detail
