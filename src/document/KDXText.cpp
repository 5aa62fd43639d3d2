#include <kiv/Error.h>
#include <kiv/KDXText.h>

#include "base/ShownText.h"

namespace kiv {
namespace {

void refuse(const char* message) {
    throw internal::error("KDXText", "applyEdits", message, errorTypeFailure);
}

}  // namespace

std::string applyEdits(std::string_view text, const std::vector<KDXTextEdit>& edits) {
    std::string result;
    std::size_t added = 0;
    for (const KDXTextEdit& edit : edits) added += edit.replacement.size();
    result.reserve(text.size() + added);
    std::size_t kept = 0;  // the end of what was taken from the text
    for (const KDXTextEdit& edit : edits) {
        if (edit.offset < kept) refuse("The edits overlap or are out of order.");
        if (edit.offset > text.size() || edit.length > text.size() - edit.offset)
            refuse("An edit lies outside of the text.");
        result.append(text.substr(kept, edit.offset - kept)).append(edit.replacement);
        kept = edit.offset + edit.length;
    }
    return result.append(text.substr(kept));
}

std::string visibleText(std::string_view text) {
    return detail::visible(text);
}

}  // namespace kiv
