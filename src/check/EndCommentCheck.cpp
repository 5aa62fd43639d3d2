#include "check/EndCommentCheck.h"

#include <kiv/KDXReader.h>

#include <algorithm>

#include "base/Blank.h"
#include "base/NameCharacter.h"
#include "base/ObjectName.h"
#include "base/Whitespace.h"

namespace kiv::detail {
namespace {

/// Whether a comment is the one that writers put there, as most are.
bool isWritten(std::string_view comment, const SeenName& object) {
    const std::string_view type = withoutReplaceMark(object.first);
    const std::string_view name = writtenName(type, object.second);
    const std::size_t colon = 2 + type.size();
    return comment.size() == colon + 1 + name.size() && comment[colon] == ':' &&
           comment.substr(0, 2) == "# " && comment.substr(2, type.size()) == type &&
           comment.substr(colon + 1) == name;
}

std::string tidied(std::string_view text) {
    std::string storage;
    return std::string(simplified(withoutOuterBlanks(text), storage));
}

std::pair<std::string, std::string> asInComment(std::string_view type, std::string_view name) {
    const std::string_view unmarked = withoutReplaceMark(type);
    return {std::string(unmarked), std::string(writtenName(unmarked, name))};
}

/// Whether it is one word, and not the end of a sentence.
bool isWord(std::string_view text) {
    return std::none_of(text.begin(), text.end(), isBlank) &&
           (text.empty() || (isWordCharacter(text.back()) && text.back() != '.'));
}

}  // namespace

std::string endCommentOf(const SeenName& object) {
    std::string comment;
    appendEndComment(comment, object.first, object.second);
    return comment;
}

bool EndCommentCheck::namesAnother(std::string_view comment, const SeenName& object) {
    if (isWritten(comment, object)) return false;
    const std::optional<Object> other = named(comment);
    if (!other || *other == asInComment(object.first, object.second)) return false;
    const auto at = objects().lower_bound({other->first, {}});
    const bool isType = at != objects().end() && at->first == other->first;
    return isType && (isWord(other->second) || objects().count(*other) != 0);
}

std::optional<EndCommentCheck::Object> EndCommentCheck::named(std::string_view comment) {
    const std::string_view remark = comment.substr(1);
    const std::size_t colon = remark.find(':');
    if (colon == std::string_view::npos) return std::nullopt;
    return asInComment(tidied(remark.substr(0, colon)), tidied(remark.substr(colon + 1)));
}

const std::set<EndCommentCheck::Object>& EndCommentCheck::objects() {
    if (found) return *found;
    found.emplace();
    for (KDXReader reader(text); reader.next();)
        if (reader.kind() == MiniKDXParser::lineObject)
            found->insert(asInComment(reader.first(), reader.second()));
    return *found;
}

}  // namespace kiv::detail
