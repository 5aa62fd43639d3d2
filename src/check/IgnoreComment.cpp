#include "check/IgnoreComment.h"

#include <cstddef>

namespace kiv::detail {
namespace {

constexpr std::string_view kIgnore = "ignore";

bool isSeparator(char c) {
    return c == ',' || isBlank(c);
}

/// Takes the next name off the front of a list; empty at its end.
std::string_view takeName(std::string_view& list) {
    while (!list.empty() && isSeparator(list.front())) list.remove_prefix(1);
    std::size_t length = 0;
    while (length < list.size() && !isSeparator(list[length])) ++length;
    const std::string_view name = list.substr(0, length);
    list.remove_prefix(length);
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
