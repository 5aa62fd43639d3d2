#include <kiv/KDXFormatting.h>

#include <algorithm>
#include <utility>

#include "Features.h"

namespace kdx::lsp {
namespace {

using kiv::KDXTextEdit;

constexpr std::string_view kBlanks = " \t\n\v\f\r";

std::size_t blanksAt(std::string_view text, std::size_t offset) {
    return std::min(text.find_first_not_of(kBlanks, offset), text.size()) - offset;
}

/// Walks two layouts of a text side by side. Where they differ in blanks and line ends alone, which
/// is everywhere, nothing else is touched, so that cursors stay; from another difference on, one
/// edit would replace all.
class LayoutEdits {
public:
    LayoutEdits(std::string_view textBefore, std::string_view textAfter)
        : before(textBefore), after(textAfter) {}

    std::vector<KDXTextEdit> find() {
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
            edits.push_back({old, oldLength, std::string(replacement)});
        old += oldLength;
        now += nowLength;
    }

    std::string_view before;
    std::string_view after;
    std::size_t old = 0;
    std::size_t now = 0;
    std::vector<KDXTextEdit> edits;
};

std::vector<KDXTextEdit> layoutOf(const OpenDocument& document) {
    const std::string& text = document.text().text();
    const std::string formatted = kiv::KDXFormatting::formatKDX(text);
    return LayoutEdits(text, formatted).find();
}

/// The bytes of the statements that a range touches.
std::pair<std::size_t, std::size_t> statementsIn(const OpenDocument& document, const Json& range) {
    const kiv::KDXDocument& tree = document.tree();
    const auto [begin, end] = document.spanOf(range);
    const auto first = tree.nodeAt(begin);
    const auto last = tree.nodeAt(end > begin ? end - 1 : end);
    const auto size = document.text().text().size();
    const auto none = kiv::KDXDocument::Node::none;
    return {first == none ? begin : tree.placeInSource(first).offset,
            last == none ? size : tree.placeInSource(last, tree.source(last).size()).offset};
}

}  // namespace

Json formatting(const Documents& documents, const Json& params) {
    const OpenDocument& document = documentOf(documents, params);
    return document.textEdits(layoutOf(document));
}

Json rangeFormatting(const Documents& documents, const Json& params) {
    const OpenDocument& document = documentOf(documents, params);
    const auto [begin, end] = statementsIn(document, params.at("range"));
    Json list = Json::array();
    for (const KDXTextEdit& edit : layoutOf(document))
        if (edit.offset >= begin && edit.offset + edit.length <= end)
            list.push_back(document.textEdit(edit));
    return list;
}

}  // namespace kdx::lsp
