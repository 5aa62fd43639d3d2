#include "check/ProblemList.h"

#include <algorithm>

namespace kiv::detail {

bool ProblemList::counts(CheckRule rule) {
    if (!wants(rule)) return false;
    const bool isError = descriptionOf(rule).severity == KDXCheck::Severity::error;
    if (!isError && ignored[indexOf(rule)]) return false;
    std::size_t& count = isError ? report.errors : report.warnings;
    return ++count <= limit;
}

void ProblemList::keep(CheckRule rule, Finding finding) {
    const KDXCheck::Rule& description = descriptionOf(rule);
    report.problems.push_back({description.name, description.severity, finding.begin, finding.end,
                               std::move(finding.message), finding.reference,
                               std::move(finding.fix)});
}

KDXCheck::Report ProblemList::take() {
    const auto comesBefore = [](const KDXCheck::Problem& a, const KDXCheck::Problem& b) {
        return a.begin.offset < b.begin.offset;
    };
    std::vector<KDXCheck::Problem>& problems = report.problems;
    if (!std::is_sorted(problems.begin(), problems.end(), comesBefore))
        std::stable_sort(problems.begin(), problems.end(), comesBefore);
    return std::move(report);
}

}  // namespace kiv::detail
