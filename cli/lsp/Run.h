#pragma once

#include <cstddef>

#include "base/Status.h"

namespace kdx::lsp {

/// Serves the client at the standard input and output until it says good-bye or is gone.
/// @return fine when it said so as it should; else findings.
/// @throws Trouble when input or output fail.
Status run(std::size_t maxDepth);

}  // namespace kdx::lsp
