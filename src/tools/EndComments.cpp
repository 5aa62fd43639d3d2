#include "tools/EndComments.h"

#include "base/Blank.h"
#include "base/ObjectName.h"
#include "parser/ReadBack.h"

namespace kiv::detail {
namespace {

using Style = KDXFormatting::Style;

bool fitsBehindEnd(std::string_view comment) {
    if (comment.find('\\') == std::string_view::npos) return true;
    const std::string line = std::string("END ").append(comment) + '\n';
    return readsBackAs(line, {MiniKDXParser::lineEnd, {}, {}, comment});
}

/// Whether the comment names the object and says nothing else.
bool says(std::string_view comment, std::string_view naming) {
    return !comment.empty() &&
           withoutLeadingBlanks(comment.substr(1)) == withoutLeadingBlanks(naming.substr(1));
}

}  // namespace

void EndComments::open(std::string_view type, std::string_view name) {
    texts.resize(lastEnd());
    appendEndComment(texts, type, name);
    ends.push_back(texts.size());
}

std::string_view EndComments::close(std::string_view comment) {
    if (ends.empty()) return comment;
    const std::size_t end = ends.back();
    ends.pop_back();
    return wanted(comment, std::string_view(texts).substr(lastEnd(), end - lastEnd()));
}

std::string_view EndComments::wanted(std::string_view comment, std::string_view naming) const {
    if (style == Style::EndComments::removed)
        return says(comment, naming) ? std::string_view() : comment;
    return comment.empty() && fitsBehindEnd(naming) ? naming : comment;
}

}  // namespace kiv::detail
