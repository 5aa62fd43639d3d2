#include "parser/Walk.h"

#include <kiv/Error.h>
#include <kiv/Messages.h>

#include <string>

namespace kiv::detail {
namespace {

constexpr const char* kUnknownSyntax = "Unknown KDX syntax found:\n%1.";
constexpr std::size_t kShownLength = 80;

std::string shownText(std::string_view text) {
    if (text.size() <= kShownLength) return std::string(text);
    return std::string(text.substr(0, kShownLength - 3)) + "...";
}

}  // namespace

void throwUnknownSyntax(std::string_view line) {
    const std::string message = UserMsg(kUnknownSyntax, nullptr).arg(shownText(line));
    throw data::invalid("MiniKDXParser", "parse", message, errorTypeFailure);
}

}  // namespace kiv::detail
