#include "check/EndComment.h"

#include <algorithm>

#include "base/Blank.h"
#include "base/NameCharacter.h"
#include "base/ObjectName.h"
#include "base/Whitespace.h"

namespace kiv::detail {
namespace {

/// Whether a text begins with this word, and a blank or nothing stands behind it.
bool beginsWithWord(std::string_view text, std::string_view word) {
    return text.substr(0, word.size()) == word &&
           (text.size() == word.size() || isBlank(text[word.size()]));
}

/// Whether a comment is the one that writers put there, as most are.
bool isWritten(std::string_view comment, const SeenName& object) {
    const std::size_t colon = 2 + object.first.size();
    return comment.size() == colon + 1 + object.second.size() && comment[colon] == ':' &&
           comment.substr(0, 2) == "# " && comment.substr(2, object.first.size()) == object.first &&
           comment.substr(colon + 1) == object.second;
}

bool isName(std::string_view text) {
    return !text.empty() && std::all_of(text.begin(), text.end(), isNameCharacter);
}

}  // namespace

std::string endCommentOf(const SeenName& object) {
    std::string comment;
    appendEndComment(comment, object.first, object.second);
    return comment;
}

bool fitsEndOf(std::string_view comment, const SeenName& object) {
    if (isWritten(comment, object)) return true;
    const std::string_view named = withoutOuterBlanks(comment.substr(1));
    const std::size_t colon = named.find(':');
    if (colon == std::string_view::npos) return true;
    std::string storage;
    std::string nameStorage;
    const std::string_view type = simplified(withoutOuterBlanks(named.substr(0, colon)), storage);
    const std::string_view behindColon = named.substr(colon + 1);
    const std::string_view name = simplified(withoutOuterBlanks(behindColon), nameStorage);
    if (!isName(type)) return true;
    const bool sameType = type == object.first || type == withoutReplaceMark(object.first);
    // "# see: the manual", "# http://..."
    const bool isRemark =
        !behindColon.empty() && (isBlank(behindColon.front()) || name.front() == '/');
    if (!sameType) return isRemark;
    return beginsWithWord(name, object.second) ||
           (object.second.empty() && beginsWithWord(name, type));
}

}  // namespace kiv::detail
