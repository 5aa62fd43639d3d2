#include "Findings.h"
#include "text/ShownText.h"

#include <algorithm>
#include <utility>

namespace kdx {

namespace {

Severity severityOf(const kiv::KDXCheck::Problem& problem) {
    switch (problem.severity) {
        case kiv::KDXCheck::Severity::error: return Severity::error;
        case kiv::KDXCheck::Severity::warning: return Severity::warning;
    }
    return Severity::error;
}

/// A place in the bytes of a source. What stands in the byte order mark is shown behind it.
Place placeInSource(const Source& source, kiv::KDXPlace place) {
    place.offset -= std::min(place.offset, source.byteOrderMark().size());
    return placeIn(source.text(), place);
}

}  // namespace

Findings::Findings(const Source& source, const kiv::KDXCheck::Report& report)
    : errorCount(report.errors), warningCount(report.warnings) {
    for (const kiv::KDXCheck::Problem& problem : report.problems) {
        problems.push_back({severityOf(problem), problem.rule, placeInSource(source, problem.begin),
                            problem.message});
        if (problem.reference) problems.back().related = placeInSource(source, *problem.reference);
    }
}

void Findings::add(Problem problem) {
    std::size_t& count = problem.severity == Severity::error ? errorCount : warningCount;
    ++count;
    if (limit == 0 || count <= limit) problems.push_back(std::move(problem));
}

void Findings::append(std::string& out, std::string_view file, MessageStyle style,
                      std::string_view cure) {
    std::stable_sort(problems.begin(), problems.end(), [](const Problem& a, const Problem& b) {
        return std::pair(a.place.line, a.place.column) < std::pair(b.place.line, b.place.column);
    });
    for (const Problem& problem : problems) appendProblem(out, file, problem, style);
    const std::size_t hidden = errorCount + warningCount - problems.size();
    if (hidden == 0) return;
    std::string text = counted(hidden, "more problem") + " not shown";
    if (!cure.empty()) text.append(" (").append(cure).append(1, ')');
    appendProblem(out, file, {Severity::note, "hidden", {}, std::move(text)}, style);
}

kiv::KDXCheck::Options checkOptions(const Settings& settings, std::size_t maxProblems) {
    kiv::KDXCheck::Options options;
    options.maxDepth = settings.maxDepth;
    if (maxProblems != 0) options.maxProblems = maxProblems;
    return options;
}

}  // namespace kdx
