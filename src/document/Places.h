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

/// The same for a comment or a blank line, which belongs to no statement when it comes last.
Spot spotForRemark(const char* function, const KDXDocument::Impl& document,
                   KDXDocument::Where where);

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

/// Lines as they stand at the end of a text that ends without a line end: so, too, unless they
/// might be open then.
std::string_view asLastOfText(std::string_view lines);

/// Puts lines in a place, as the text ends where they are the last.
void insertLines(Change& change, const StatementTree& tree, const Spot& spot,
                 std::string_view lines, std::string_view lineEnd);

}  // namespace kiv::detail
