#include "parser/LineTrimming.h"

#include "external/Blank.h"

namespace kiv::detail {
namespace {

std::string_view withoutComment(std::string_view text, std::size_t searchFrom) {
    const std::size_t hash = text.find('#', searchFrom);
    if (hash == std::string_view::npos) return text;
    if (hash > 0 && text[hash - 1] == '\\') return text;
    return text.substr(0, hash);
}

}  // namespace

std::string_view trimLine(std::string_view line, std::size_t nameLength) {
    const std::string_view text = withoutLeadingBlanks(line);
    if (text.empty() || text.front() == '!') return text;
    return withoutTrailingBlanks(withoutComment(text, nameLength));
}

std::string_view removeComment(std::string_view line) {
    const std::string_view text = withoutLeadingBlanks(line);
    const bool verbatim = !text.empty() && (text.front() == '!' || text.front() == '$');
    return withoutTrailingBlanks(verbatim ? text : text.substr(0, text.find('#')));
}

}  // namespace kiv::detail
