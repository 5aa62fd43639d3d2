#pragma once

#include <kiv/KDXDocument.h>

namespace kdx {

/// Removes all comments from a text, and nothing from what it means. Where one keeps the line from
/// being continued, a bare '#' stays.
void removeComments(kiv::KDXDocument& document);

}  // namespace kdx
