#include "ReadChecked.h"

#include <vector>

namespace kdx {
namespace {

std::vector<std::string> syntaxRules() {
    std::vector<std::string> names;
    for (const kiv::KDXCheck::Rule& rule : kiv::KDXCheck::rules())
        if (rule.isSyntax) names.emplace_back(rule.name);
    return names;
}

kiv::KDXCheck::Options optionsFor(Demand demand, const Settings& settings) {
    kiv::KDXCheck::Options options = checkOptions(settings, kDefaultMaxErrors);
    options.warnings = false;
    if (demand != Demand::structure) options.rules = syntaxRules();
    if (demand == Demand::nesting) options.rules.emplace_back("too-deep");
    return options;
}

}  // namespace

std::optional<Source> readChecked(const std::string& file, Demand demand, const Settings& settings,
                                  Outcome& outcome) {
    Source source = readSource(file);
    if (file == kStandardInput && !settings.inputName.empty()) source.name = settings.inputName;
    const auto report = kiv::KDXCheck::check(source.buffer, optionsFor(demand, settings));
    if (report.errors == 0) return source;
    Findings(source, report)
        .append(outcome.diagnostics, source.name, settings, "kdx check --max-errors 0 shows all");
    outcome.raise(Status::trouble);
    return std::nullopt;
}

}  // namespace kdx
