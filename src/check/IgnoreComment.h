#pragma once

#include <string_view>

#include "base/Blank.h"
#include "check/CheckRules.h"

namespace kiv::detail {

/// Whether a comment, from its '#' on if there is one, speaks to the tools that read it.
inline bool isDirective(std::string_view comment) {
    if (comment.empty()) return false;
    return withoutLeadingBlanks(comment.substr(1)).substr(0, 4) == "kdx:";
}

/// The rules that such a comment says are to be ignored:
///
///     # kdx: ignore RULE, RULE
///
/// Words that are no rules are passed over.
RuleSet rulesIgnoredBy(std::string_view directive);

}  // namespace kiv::detail
