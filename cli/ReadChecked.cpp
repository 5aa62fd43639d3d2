#include "ReadChecked.h"

namespace kdx {

std::optional<CheckedSource> readChecked(const std::string& file, Demand demand,
                                         const Settings& settings, Outcome& outcome) {
    Source source = readSource(file);
    Report report = check(source, demand, settings, kDefaultMaxErrors);
    if (report.findings.errors() == 0)
        return CheckedSource{std::move(source), std::move(report.seams)};
    report.findings.append(outcome.diagnostics, source.name, settings,
                           "kdx check --max-errors 0 shows all");
    outcome.raise(Status::trouble);
    return std::nullopt;
}

}  // namespace kdx
