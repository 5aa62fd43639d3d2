#pragma once

#include <kiv/KDXReader.h>

#include <cstddef>
#include <string_view>

#include "base/Blank.h"
#include "document/ProblemList.h"

namespace kiv::detail {

/// Whether a backslash may stand at the end of a line of the statement; false for nearly all.
inline bool mayHaveBackslash(const KDXReader& reader) {
    const std::string_view source = reader.source();
    std::size_t end = source.size();
    if (end > 0 && source[end - 1] == '\n') --end;
    if (end > 0 && source[end - 1] == '\r') --end;
    if (end == 0) return false;
    return reader.isContinued() || source[end - 1] == '\\' || isBlank(source[end - 1]);
}

/// Checks where the lines of the reader's statement end, and what continues them, for backslashes
/// that seem to stand there by mistake.
void checkLineEnds(const KDXReader& reader, ProblemList& problems);

}  // namespace kiv::detail
