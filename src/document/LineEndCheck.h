#pragma once

#include <kiv/KDXReader.h>

#include "document/ProblemList.h"

namespace kiv::detail {

/// Checks where the lines of the reader's statement end, and what continues them, for backslashes
/// that seem to stand there by mistake.
void checkLineEnds(const KDXReader& reader, ProblemList& problems);

}  // namespace kiv::detail
