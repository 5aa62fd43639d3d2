#pragma once

#include <string_view>

#include "document/CheckRules.h"

namespace kiv::detail {

/// The rules that a comment, from its '#' on, says are to be ignored:
///
///     # kdx: ignore RULE, RULE
///
/// Words that are no rules are passed over.
RuleSet rulesIgnoredBy(std::string_view comment);

/// Whether the comment speaks to the tools that read it.
bool isDirective(std::string_view comment);

}  // namespace kiv::detail
