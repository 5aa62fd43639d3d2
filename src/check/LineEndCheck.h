#pragma once

#include <kiv/KDXReader.h>

#include <string_view>

#include "base/Blank.h"
#include "check/ProblemList.h"

namespace kiv::detail {

/// Whether a backslash stands at the end of a line of the statement, blanks behind it aside.
inline bool hasFinalBackslash(const KDXReader& reader) {
    const std::string_view source = withoutTrailingBlanks(reader.source());
    return reader.isContinued() || (!source.empty() && source.back() == '\\');
}

/// Checks such a statement for backslashes that seem to stand there by mistake.
void checkLineEnds(const KDXReader& reader, ProblemList& problems);

}  // namespace kiv::detail
