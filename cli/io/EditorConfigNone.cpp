#include "EditorConfig.h"

namespace kdx {

std::optional<std::size_t> configuredIndent(const std::string& /*path*/) {
    return std::nullopt;
}

}  // namespace kdx
