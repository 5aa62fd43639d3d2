#include "document/IgnoreComment.h"

#include <algorithm>

namespace kiv::detail {
namespace {

constexpr std::string_view kIgnore = "ignore";

bool isSeparator(char c) {
    return c == ',' || isBlank(c);
}

/// Takes the next name off the front of a list; empty at its end.
std::string_view takeName(std::string_view& list) {
    const auto begin = std::find_if_not(list.begin(), list.end(), isSeparator);
    const auto end = std::find_if(begin, list.end(), isSeparator);
    const std::string_view name = list.substr(static_cast<std::size_t>(begin - list.begin()),
                                              static_cast<std::size_t>(end - begin));
    list.remove_prefix(static_cast<std::size_t>(end - list.begin()));
    return name;
}

}  // namespace

RuleSet rulesIgnoredBy(std::string_view directive) {
    RuleSet ignored;
    directive.remove_prefix(directive.find(':') + 1);
    if (takeName(directive) != kIgnore) return ignored;
    for (std::string_view name = takeName(directive); !name.empty(); name = takeName(directive))
        if (const auto rule = findRule(name)) ignored.set(*rule);
    return ignored;
}

}  // namespace kiv::detail
