#include "Glob.h"

#include <cstddef>
#include <optional>

#include "ShownText.h"

namespace kdx {
namespace {

using Rest = std::string_view;

std::size_t characterLength(Rest text) {
    std::size_t length = 1;
    while (length < text.size() && continuesCharacter(text[length])) ++length;
    return length;
}

/// The length of a set at the front of a pattern, the brackets included; 0 when there is none.
std::size_t setLength(Rest pattern) {
    if (pattern.empty() || pattern.front() != '[') return 0;
    const std::size_t begin = pattern.substr(1, 1) == "!" ? 3 : 2;  // a ']' in front is a member
    const std::size_t end = pattern.find(']', begin);
    return end == Rest::npos ? 0 : end + 1;
}

/// Whether a character is among the members of a set, which are without the brackets.
bool isMember(char c, Rest members) {
    for (; !members.empty(); members.remove_prefix(1)) {
        const bool isRange = members.size() > 2 && members[1] == '-';
        const char last = members[isRange ? 2 : 0];
        if (members.front() <= c && c <= last) return true;
        if (isRange) members.remove_prefix(2);
    }
    return false;
}

bool isInSet(char c, Rest set) {
    Rest members = set.substr(1, set.size() - 2);
    const bool excludes = members.front() == '!';
    if (excludes) members.remove_prefix(1);
    return isMember(c, members) != excludes;
}

/// Takes one character off the text, and what stands for it off the pattern.
bool takeOne(Rest& text, Rest& pattern) {
    if (text.empty() || pattern.empty()) return false;
    const std::size_t length = setLength(pattern);
    const bool isWild = length > 0 || pattern.front() == '?';
    if (isWild ? text.front() == '/' : text.front() != pattern.front()) return false;
    if (length > 0 && !isInSet(text.front(), pattern.substr(0, length))) return false;
    text.remove_prefix(isWild ? characterLength(text) : 1);
    pattern.remove_prefix(length > 0 ? length : 1);
    return true;
}

/// What is left of text and pattern behind a `*`, for another try.
struct Retry {
    Rest text;
    Rest pattern;
};

/// Gives one more character to a `*`.
bool extend(std::optional<Retry>& retry, bool overSlash) {
    if (!retry || retry->text.empty() || (!overSlash && retry->text.front() == '/')) return false;
    retry->text.remove_prefix(1);
    return true;
}

}  // namespace

// A `*` takes as little as it can. More is given to the last one alone, and when that does not
// help, to the last `**`: what stands in front of those has matched already.
bool matchesGlob(std::string_view text, std::string_view pattern) {
    std::optional<Retry> star;
    std::optional<Retry> doubleStar;
    for (;;) {
        if (pattern.substr(0, 2) == "**") {
            pattern.remove_prefix(2);
            doubleStar = {text, pattern};
            star.reset();
        } else if (pattern.substr(0, 1) == "*") {
            pattern.remove_prefix(1);
            star = {text, pattern};
        } else if (text.empty() && pattern.empty()) {
            return true;
        } else if (!takeOne(text, pattern)) {
            if (!extend(star, false)) {
                star.reset();
                if (!extend(doubleStar, true)) return false;
            }
            const Retry& retry = star ? *star : *doubleStar;
            text = retry.text;
            pattern = retry.pattern;
        }
    }
}

}  // namespace kdx
