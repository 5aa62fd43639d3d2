#include "LineEdits.h"
#include "text/ShownText.h"

#include <algorithm>
#include <string>

namespace kdx::lsp {
namespace {

constexpr std::string_view kBlanks = " \t\n\v\f\r";

std::size_t blanksAt(std::string_view text, std::size_t offset) {
    return std::min(text.find_first_not_of(kBlanks, offset), text.size()) - offset;
}

/// Walks two layouts of a text side by side.
class LayoutEdits {
public:
    LayoutEdits(std::string_view textBefore, std::string_view textAfter)
        : before(textBefore), after(textAfter) {}

    std::vector<kiv::KDXTextEdit> find() {
        for (;;) {
            passBlanks();
            if (passSame()) continue;
            replace(before.size() - old, after.size() - now);
            return edits;
        }
    }

private:
    /// The blanks behind a line, those in front of the next one, and blank lines between them are
    /// apart from one another.
    void passBlanks() {
        const std::string_view oldBlanks = before.substr(old, blanksAt(before, old));
        const std::string_view nowBlanks = after.substr(now, blanksAt(after, now));
        const std::size_t oldEnd = oldBlanks.find('\n');
        const std::size_t nowEnd = nowBlanks.find('\n');
        if (oldEnd == std::string_view::npos || nowEnd == std::string_view::npos)
            return replace(oldBlanks.size(), nowBlanks.size());
        const std::size_t oldBegin = oldBlanks.rfind('\n') + 1;
        const std::size_t nowBegin = nowBlanks.rfind('\n') + 1;
        replace(oldEnd, nowEnd);
        replace(oldBegin - oldEnd, nowBegin - nowEnd);
        replace(oldBlanks.size() - oldBegin, nowBlanks.size() - nowBegin);
    }

    /// @return false when there is nothing the same.
    bool passSame() {
        const std::size_t begin = old;
        while (old < before.size() && now < after.size() && before[old] == after[now] &&
               kBlanks.find(before[old]) == std::string_view::npos) {
            ++old;
            ++now;
        }
        return old != begin;
    }

    void replace(std::size_t oldLength, std::size_t nowLength) {
        const std::string_view replacement = after.substr(now, nowLength);
        if (before.substr(old, oldLength) != replacement)
            edits.push_back(shortened(before, {old, oldLength, std::string(replacement)}));
        old += oldLength;
        now += nowLength;
    }

    std::string_view before;
    std::string_view after;
    std::size_t old = 0;
    std::size_t now = 0;
    std::vector<kiv::KDXTextEdit> edits;
};

}  // namespace

kiv::KDXTextEdit shortened(std::string_view text, const kiv::KDXTextEdit& edit) {
    const std::string_view old = text.substr(edit.offset, edit.length);
    const std::string_view now = edit.replacement;
    const auto differ = std::mismatch(old.begin(), old.end(), now.begin(), now.end());
    const std::size_t same =
        characterBegin(old, static_cast<std::size_t>(differ.first - old.begin()));
    const std::size_t limit = std::min(old.size(), now.size()) - same;
    std::size_t tail = 0;
    while (tail < limit && old[old.size() - tail - 1] == now[now.size() - tail - 1]) ++tail;
    while (tail > 0 && continuesCharacter(old[old.size() - tail])) --tail;
    return {edit.offset + same, old.size() - same - tail,
            std::string(now.substr(same, now.size() - same - tail))};
}

std::vector<kiv::KDXTextEdit> layoutEdits(std::string_view before, std::string_view after) {
    return LayoutEdits(before, after).find();
}

}  // namespace kdx::lsp
