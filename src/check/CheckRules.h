#pragma once

#include <kiv/KDXCheck.h>

#include <bitset>
#include <cstddef>
#include <optional>
#include <string_view>

namespace kiv::detail {

/// The rules, in the order of their table.
enum class CheckRule {
    unknownSyntax,
    endCase,
    textBehindEnd,
    noObject,
    unexpectedEnd,
    tooDeep,
    neverClosed,
    indentation,
    endComment,
    endAsName,
    cutEnd,
    repeatedObject,
    repeatedParameter,
    slashInName,
    hashInValue,
    swallowedContinuation,
    swallowedStatement,
    loneBackslash,
    backslashReturn,
    byteOrderMark,
    nulByte,
    noUtf8,
};

constexpr std::size_t kCheckRules = static_cast<std::size_t>(CheckRule::noUtf8) + 1;

using RuleSet = std::bitset<kCheckRules>;

constexpr std::size_t indexOf(CheckRule rule) {
    return static_cast<std::size_t>(rule);
}

/// What the table says of a rule.
const KDXCheck::Rule& descriptionOf(CheckRule rule);

/// The index of the rule with this name; nothing when there is none.
std::optional<std::size_t> findRule(std::string_view name);

}  // namespace kiv::detail
