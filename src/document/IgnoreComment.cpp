#include "document/IgnoreComment.h"

#include <algorithm>

#include "base/Blank.h"

namespace kiv::detail {
namespace {

constexpr std::string_view kAddress = "kdx:";
constexpr std::string_view kIgnore = "ignore";

bool takeWord(std::string_view& text, std::string_view word) {
    text = withoutLeadingBlanks(text);
    if (text.substr(0, word.size()) != word) return false;
    text.remove_prefix(word.size());
    return true;
}

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

bool isDirective(std::string_view comment) {
    return takeWord(comment, "#") && takeWord(comment, kAddress);
}

RuleSet rulesIgnoredBy(std::string_view comment) {
    RuleSet ignored;
    const bool speaksOfRules =
        takeWord(comment, "#") && takeWord(comment, kAddress) && takeWord(comment, kIgnore);
    if (!speaksOfRules) return ignored;
    for (std::string_view name = takeName(comment); !name.empty(); name = takeName(comment))
        if (const auto rule = findRule(name)) ignored.set(*rule);
    return ignored;
}

}  // namespace kiv::detail
