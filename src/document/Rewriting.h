#pragma once

#include <string_view>

#include "document/StatementTree.h"

// Statements that are written anew. Each keeps its own blanks, its comment, and the lines that it
// consists of, as far as it then says what it should; what it cannot say is refused in the name of
// a function, with kiv::data::invalid.

namespace kiv::detail {

/// The name of an object, the value of a parameter.
void rewriteSecond(const char* function, StatementTree& tree, Index index, std::string_view second);
/// The type of an object, the name of a parameter.
void rewriteFirst(const char* function, StatementTree& tree, Index index, std::string_view first);
/// What an action or a verbatim line says.
void rewriteText(const char* function, StatementTree& tree, Index index, std::string_view text);
/// The comment; an empty one goes.
void rewriteComment(const char* function, StatementTree& tree, Index index,
                    std::string_view comment);

}  // namespace kiv::detail
