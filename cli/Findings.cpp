#include "Findings.h"

#include <algorithm>
#include <utility>

namespace kdx {

void Findings::add(Problem problem) {
    std::size_t& count = problem.severity == Severity::error ? errorCount : warningCount;
    ++count;
    if (limit == 0 || count <= limit) problems.push_back(std::move(problem));
}

void Findings::append(std::string& out, std::string_view file, const Settings& settings,
                      std::string_view cure) {
    std::stable_sort(problems.begin(), problems.end(), [](const Problem& a, const Problem& b) {
        return std::pair(a.place.line, a.place.column) < std::pair(b.place.line, b.place.column);
    });
    for (const Problem& problem : problems) appendProblem(out, file, problem, settings);
    const std::size_t hidden = errorCount + warningCount - problems.size();
    if (hidden == 0) return;
    std::string text = counted(hidden, "more problem") + " not shown";
    if (!cure.empty()) text.append(" (").append(cure).append(1, ')');
    appendProblem(out, file, {Severity::note, "hidden", {}, std::move(text)}, settings);
}

}  // namespace kdx
