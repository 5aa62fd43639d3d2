#pragma once

#include <string>
#include <string_view>

#include "document/Change.h"
#include "document/DocumentImpl.h"
#include "document/StatementTree.h"

// Where in a document something is put, and what has to be done there.

namespace kiv::detail {

/// Between `parent` and the child behind which something comes, kNone for the first.
struct Spot {
    Index parent;
    Index behind;
};

/// The place that a caller asks for.
Spot spotOf(const char* function, const KDXDocument::Impl& document, KDXDocument::Where where);

/// The last place in an object.
Spot lastSpotIn(const char* function, const StatementTree& tree, Index object);

/// Behind the last parameter directly in an object; without one, in front of what is in it.
Spot spotForParameter(const StatementTree& tree, Index object);

/// The statement in front of a spot in text order; the root for the first.
Index statementBefore(const StatementTree& tree, const Spot& spot);

/// Refuses bytes that would come to stand at the beginning of the text and be read as a byte order
/// mark there.
void requireNoMark(const char* function, const StatementTree& tree, std::string_view bytes);

/// Gives the last statement of the text what it lacks when something comes behind it.
/// @return whether that is a line end, which what comes then has to do without.
bool closeTextBefore(Change& change, const StatementTree& tree, const Spot& spot,
                     std::string_view lineEnd);

/// Puts lines in a place. Where the text ends there without a line end, they end so, too, unless
/// they were open then.
void insertLines(Change& change, const StatementTree& tree, const Spot& spot, std::string lines,
                 std::string_view lineEnd);

}  // namespace kiv::detail
