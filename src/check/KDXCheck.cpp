#include <kiv/Error.h>
#include <kiv/KDXCheck.h>
#include <kiv/KDXReader.h>

#include <optional>
#include <utility>

#include "check/CheckRules.h"
#include "check/ErrorCheck.h"
#include "check/ProblemList.h"
#include "check/WarningCheck.h"

namespace kiv {
namespace {

using detail::RuleSet;

RuleSet rulesOf(KDXCheck::Severity severity) {
    RuleSet rules;
    for (std::size_t i = 0; i < rules.size(); ++i)
        rules[i] = KDXCheck::rules()[i].severity == severity;
    return rules;
}

RuleSet rulesNamed(const std::vector<std::string>& names) {
    RuleSet rules;
    for (const std::string& name : names) {
        const std::optional<std::size_t> rule = detail::findRule(name);
        if (!rule)
            throw data::invalid("KDXCheck", "check", "There is no rule with the name " + name + ".",
                                errorTypeFailure);
        rules.set(*rule);
    }
    return rules;
}

RuleSet wantedBy(const KDXCheck::Options& options) {
    const RuleSet chosen = options.rules.empty() ? RuleSet().set() : rulesNamed(options.rules);
    return options.warnings ? chosen : chosen & rulesOf(KDXCheck::Severity::error);
}

KDXCheck::Report checkForErrors(std::string_view text, const RuleSet& wanted,
                                const KDXCheck::Options& options) {
    detail::ProblemList problems(wanted, options.maxProblems);
    KDXReader reader(text);
    detail::ErrorCheck errors(text, reader, problems, options.maxDepth);
    while (reader.next()) errors.check();
    return problems.take();
}

/// @return nothing when that needs more memory than was given.
std::optional<KDXCheck::Report> checkForAll(std::string_view text, const RuleSet& wanted,
                                            const KDXCheck::Options& options,
                                            detail::NameCheck::Memory memory) {
    detail::ProblemList problems(wanted, options.maxProblems);
    KDXReader reader(text);
    detail::ErrorCheck errors(text, reader, problems, options.maxDepth);
    detail::WarningCheck warnings(text, reader, problems, memory);
    while (reader.next()) {
        errors.check();
        warnings.check();
        if (warnings.isOutgrown()) return std::nullopt;
    }
    warnings.finish();
    return problems.take();
}

}  // namespace

KDXCheck::Report KDXCheck::check(std::string_view text, const Options& options) {
    using Memory = detail::NameCheck::Memory;
    const RuleSet wanted = wantedBy(options);
    if ((wanted & rulesOf(Severity::warning)).none()) return checkForErrors(text, wanted, options);
    if (auto report = checkForAll(text, wanted, options, Memory::open)) return *std::move(report);
    return checkForAll(text, wanted, options, Memory::all).value();
}

}  // namespace kiv
