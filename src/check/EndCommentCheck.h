#pragma once

#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <utility>

#include "check/NamesSeen.h"

namespace kiv::detail {

/// The comment that writers put behind the END of an object.
std::string endCommentOf(const SeenName& object);

/// Tells comments of ENDs that name an object from other remarks.
///
/// A comment may name an object when all of it is "# TYPE:NAME", blanks around the colon aside, and
/// TYPE is the type of an object of the text. It does when that object stands in the text, too, or
/// when NAME is one word, as one that is out of date is: "# TYPE: is full" is a remark.
class EndCommentCheck {
public:
    explicit EndCommentCheck(std::string_view wholeText) : text(wholeText) {}

    /// Whether the comment, from its '#' on, names another object than this one.
    bool namesAnother(std::string_view comment, const SeenName& object);

private:
    using Object = std::pair<std::string, std::string>;  // type and name, as comments have them

    static std::optional<Object> named(std::string_view comment);
    const std::set<Object>& objects();

    std::string_view text;
    std::optional<std::set<Object>> found;  // for most texts they need not be looked for
};

}  // namespace kiv::detail
