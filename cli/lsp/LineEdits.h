#pragma once

#include <kiv/KDXText.h>

#include <string_view>
#include <vector>

namespace kdx::lsp {

/// The edits that make one layout of a text into another one, each as short as can be: where the
/// two differ in blanks and line ends alone, nothing else is touched. From the first other
/// difference on, one edit replaces all.
std::vector<kiv::KDXTextEdit> layoutEdits(std::string_view before, std::string_view after);

/// The same edit without the bytes at its ends that stay, by whole characters.
kiv::KDXTextEdit shortened(std::string_view text, const kiv::KDXTextEdit& edit);

}  // namespace kdx::lsp
