#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace kdx {

/// The names of the rules that are selected, all when nothing is, apart from those to ignore. Each
/// text may hold several names, separated by commas.
/// @throws Trouble for a name of no rule, and when no rule is left.
std::vector<std::string> chosenRules(const std::vector<std::string>& select,
                                     const std::vector<std::string>& ignore);

/// What the documentation says about a rule. @throws Trouble for a name of no rule.
std::string_view explainedRule(const std::string& name);

}  // namespace kdx
