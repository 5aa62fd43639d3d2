#include "RuleChoice.h"

#include <kiv/KDXCheck.h>

#include <algorithm>

#include "RulesText.h"
#include "base/Status.h"
#include "text/ShownText.h"
#include "text/Suggestion.h"

namespace kdx {
namespace {

using Names = std::vector<std::string>;

Names allRules() {
    Names names;
    for (const kiv::KDXCheck::Rule& rule : kiv::KDXCheck::rules()) names.emplace_back(rule.name);
    return names;
}

bool contains(const Names& names, const std::string& name) {
    return std::find(names.begin(), names.end(), name) != names.end();
}

void requireRule(const std::string& name) {
    const Names known = allRules();
    if (!contains(known, name))
        throw Trouble("there is no rule " + shownName(name) + suggestion(name, known));
}

/// The names in lists with commas, each of which is a rule.
Names namesIn(const Names& lists) {
    Names names;
    for (std::string_view list : lists) {
        for (bool last = false; !last;) {
            const std::size_t comma = list.find(',');
            names.emplace_back(list.substr(0, comma));
            requireRule(names.back());
            last = comma == std::string_view::npos;
            list.remove_prefix(last ? 0 : comma + 1);
        }
    }
    return names;
}

}  // namespace

std::vector<std::string> chosenRules(const std::vector<std::string>& select,
                                     const std::vector<std::string>& ignore) {
    Names names = select.empty() ? allRules() : namesIn(select);
    const Names ignored = namesIn(ignore);
    const auto isIgnored = [&](const std::string& name) { return contains(ignored, name); };
    names.erase(std::remove_if(names.begin(), names.end(), isIgnored), names.end());
    if (names.empty()) throw Trouble("no rule is left to check");
    return names;
}

std::string_view explainedRule(const std::string& name) {
    requireRule(name);
    const std::size_t begin = kRulesText.find("### `" + name + "`\n");
    const std::string_view section = kRulesText.substr(begin);
    return section.substr(0, section.find("\n##"));
}

}  // namespace kdx
