#include "ReadChecked.h"

namespace kdx {
namespace {

kiv::KDXCheck::Options optionsFor(Demand demand, const Settings& settings) {
    kiv::KDXCheck::Options options = checkOptions(settings, kDefaultMaxErrors);
    options.warnings = false;
    if (demand == Demand::lines)
        options.rules = {"unknown-syntax", "end-case", "text-behind-end", "too-deep"};
    return options;
}

}  // namespace

std::optional<Source> readChecked(const std::string& file, Demand demand, const Settings& settings,
                                  Outcome& outcome) {
    Source source = readSource(file);
    const auto report = kiv::KDXCheck::check(source.buffer, optionsFor(demand, settings));
    if (report.errors == 0) return source;
    Findings(source, report)
        .append(outcome.diagnostics, source.name, settings, "kdx check --max-errors 0 shows all");
    outcome.raise(Status::trouble);
    return std::nullopt;
}

}  // namespace kdx
