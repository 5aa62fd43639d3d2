#include "check/CheckRules.h"

#include <algorithm>
#include <cassert>

namespace kiv {

const std::vector<KDXCheck::Rule>& KDXCheck::rules() {
    using KDXCheck::Severity;
    static const std::vector<Rule> table = {
        {"unknown-syntax", Severity::error, "A line is no KDX", true},
        {"end-case", Severity::error, "END is written in other letters than three capitals", true},
        {"text-behind-end", Severity::error, "Something other than a comment stands behind END",
         true},
        {"no-object", Severity::error, "A parameter stands outside of all objects"},
        {"unexpected-end", Severity::error, "An END closes nothing"},
        {"too-deep", Severity::error, "Objects are nested deeper than allowed"},
        {"never-closed", Severity::warning, "The END of an object is missing"},
        {"indentation", Severity::warning, "The indentation contradicts the nesting"},
        {"end-comment", Severity::warning,
         "The comment of an END names another object than the one that it closes"},
        {"end-as-name", Severity::warning,
         "A line that begins with END is read as an object or a parameter"},
        {"cut-end", Severity::warning, "An END is spread over several lines"},
        {"repeated-object", Severity::warning, "An object stands twice in the same object"},
        {"repeated-parameter", Severity::warning, "A parameter stands twice in the same object"},
        {"slash-in-name", Severity::warning, "A '/' in an object's name makes its path ambiguous"},
        {"hash-in-value", Severity::warning, "A '#' leaves a value empty, or cuts a value or name"},
        {"swallowed-continuation", Severity::warning,
         "A comment swallows the lines that continue its line"},
        {"swallowed-statement", Severity::warning,
         "A backslash at the end of a line makes the next statement a part of it"},
        {"lone-backslash", Severity::warning, "A line holds nothing but a backslash"},
        {"backslash-return", Severity::warning,
         "A backslash in front of a carriage return continues nothing"},
        {"byte-order-mark", Severity::warning, "A byte order mark stands in front of the text"},
        {"nul-byte", Severity::warning, "The text holds a NUL byte"},
        {"no-utf8", Severity::warning, "The text holds bytes that are no UTF-8"},
    };
    return table;
}

namespace detail {

const KDXCheck::Rule& descriptionOf(CheckRule rule) {
    assert(KDXCheck::rules().size() == kCheckRules);
    return KDXCheck::rules()[indexOf(rule)];
}

std::optional<std::size_t> findRule(std::string_view name) {
    const std::vector<KDXCheck::Rule>& all = KDXCheck::rules();
    const auto found = std::find_if(all.begin(), all.end(),
                                    [name](const auto& rule) { return rule.name == name; });
    if (found == all.end()) return std::nullopt;
    return static_cast<std::size_t>(found - all.begin());
}

}  // namespace detail
}  // namespace kiv
