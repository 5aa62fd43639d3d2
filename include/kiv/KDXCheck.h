#pragma once

#include <kiv/ArgumentTypes.h>
#include <kiv/KDXExport.h>
#include <kiv/KDXText.h>

#include <cstddef>
#include <limits>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// Finds all that is wrong with a KDX text, and all that looks like a mistake.
///
///     for (const auto& problem : kiv::KDXCheck::check(text).problems)
///         std::cout << problem.begin.line << ": " << problem.message << '\n';
///
/// A comment `# kdx: ignore RULE` silences warnings: the names of rules, separated by blanks or
/// commas. On the line of a statement it speaks of that statement; on a line of its own, of the
/// statement below, and of the comments and blank lines up to there. For a warning that concerns a
/// whole object, that is the object's first line. Errors cannot be silenced.
namespace kiv::KDXCheck {

enum class Severity {
    error,    ///< the parser or KDXToStringMapMap refuses the text
    warning,  ///< the text is read, but it may mean something else than its author thinks
};

struct Rule {
    std::string_view name;  ///< words in small letters, joined by '-'
    Severity severity = Severity::error;
    std::string_view explanation;  ///< one sentence, without a full stop
    bool isSyntax = false;         ///< whether it speaks of lines that are no KDX, whose kind is
                                   ///< MiniKDXParser::lineUnrecognised
};

/// All rules, the errors first. They live as long as the program.
KIV_KDX_EXPORT const std::vector<Rule>& rules();

/// How a text can be changed so that a problem goes.
struct Fix {
    std::string_view title;          ///< what it does; lives as long as the program
    std::vector<KDXTextEdit> edits;  ///< for applyEdits()
    /// Whether it can be made unseen: KDXReader reads nothing else afterwards, except that an END
    /// that closed nothing is gone, and no new problem comes up. Without a byte order mark the
    /// readers that do not pass over it take the first line, too.
    bool safe = false;
};

struct Problem {
    std::string_view rule;  ///< its name; lives as long as the program
    Severity severity = Severity::error;
    KDXPlace begin;
    KDXPlace end;         ///< behind the last byte; the same as `begin` where something is missing
    std::string message;  ///< for people, in one line; it holds no control character
    std::optional<KDXPlace> reference;  ///< another place that the message speaks of
    std::optional<Fix> fix;
};

constexpr std::size_t kUnlimited = std::numeric_limits<std::size_t>::max();

struct Options {
    /// Whether to look for warnings, too. Errors alone are found at the speed of KDXReader.
    bool warnings = true;
    /// The names of the rules to check; all when empty.
    std::vector<std::string> rules;
    /// So many objects may be open at a time; rule "too-deep".
    std::size_t maxDepth = kUnlimited;
    /// So many errors, and as many warnings, are kept: those that stand first in the text. More are
    /// only counted.
    std::size_t maxProblems = kUnlimited;
};

struct Report {
    std::vector<Problem> problems;  ///< in the order of their beginnings
    std::size_t errors = 0;         ///< how many there are, also of those that were not kept
    std::size_t warnings = 0;
};

/// Checks a whole text, in time proportional to it, give or take the search for a name in an object
/// that has many. A byte order mark in front of it is passed over. A text is free of errors exactly
/// when KDXToStringMapMap::convert() takes what stands behind the mark, apart from "too-deep".
/// @throws kiv::data::invalid when the options name a rule that there is not.
KIV_KDX_EXPORT Report check(std::string_view text, const Options& options = {});

// A null pointer, or 0, is no text: this does not compile.
template <typename Text, typename = detail::IfNoText<Text>>
Report check(Text, const Options& = {}) = delete;

}  // namespace kiv::KDXCheck
