#include "ReadChecked.h"

namespace kdx {

std::optional<Source> readChecked(const std::string& file, Demand demand, const Settings& settings,
                                  Outcome& outcome) {
    Source source = readSource(file);
    const Findings findings = check(source, demand, settings, kDefaultMaxErrors);
    if (findings.errors == 0) return source;
    appendFindings(outcome.diagnostics, source.name, findings, settings);
    outcome.raise(Status::trouble);
    return std::nullopt;
}

}  // namespace kdx
