#include "parser/LineTrimming.h"

#include "external/Blank.h"

namespace kiv::detail {
namespace {

std::string_view withoutComment(std::string_view text) {
    const std::size_t hash = text.find('#');
    if (hash == std::string_view::npos) return text;
    if (hash > 0 && text[hash - 1] == '\\') return text;
    return text.substr(0, hash);
}

}  // namespace

std::string_view trimLine(std::string_view line) {
    const std::string_view text = withoutLeadingBlanks(line);
    if (text.empty() || text.front() == '!') return text;
    return withoutTrailingBlanks(withoutComment(text));
}

}  // namespace kiv::detail
