#pragma once

#include <cstdint>
#include <string>

namespace fuzz {

/// A text of KDX, right in most lines and wrong in some: rich in continuations, escaped '#',
/// carriage returns, lone backslashes, and ENDs that are missing, cut or too many. The same for the
/// same seed on every machine.
std::string generateText(std::uint64_t seed);

}  // namespace fuzz
