#include "WholeLines.h"

#include <algorithm>
#include <cstddef>

namespace kdx {
namespace {

std::size_t lineBegin(std::string_view text, std::size_t offset) {
    return offset == 0 ? 0 : text.rfind('\n', offset - 1) + 1;
}

/// Behind the line feed of the line that holds the byte at an offset.
std::size_t lineEnd(std::string_view text, std::size_t offset) {
    return std::min(text.find('\n', offset), text.size() - 1) + 1;
}

}  // namespace

std::vector<kiv::KDXTextEdit> wholeLineEdits(std::string_view text,
                                             const std::vector<kiv::KDXTextEdit>& edits) {
    std::vector<kiv::KDXTextEdit> result;
    for (auto edit = edits.begin(); edit != edits.end();) {
        const std::size_t begin = lineBegin(text, edit->offset);
        std::size_t end = begin;
        std::vector<kiv::KDXTextEdit> here;
        do {
            here.push_back(*edit);
            here.back().offset -= begin;
            const std::size_t last = edit->offset + std::max<std::size_t>(edit->length, 1) - 1;
            if (last >= end) end = lineEnd(text, last);
            ++edit;
        } while (edit != edits.end() && edit->offset <= text.find('\n', end));
        const std::string_view lines = text.substr(begin, end - begin);
        result.push_back({begin, lines.size(), kiv::applyEdits(lines, here)});
    }
    return result;
}

}  // namespace kdx
