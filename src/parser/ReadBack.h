#pragma once

#include <kiv/KDXReader.h>

#include <string>
#include <string_view>

namespace kiv::detail {

/// What a statement says: its kind, its halves and its comment. For an action, a verbatim line and
/// one that is no KDX, `first` is the text.
struct Meaning {
    MiniKDXParser::lineType kind = MiniKDXParser::lineBlank;
    std::string_view first;
    std::string_view second;
    std::string_view comment;

    bool operator==(const Meaning& other) const {
        return kind == other.kind && first == other.first && second == other.second &&
               comment == other.comment;
    }
};

/// What the reader's statement says, until the reader goes on.
Meaning meaningOf(const KDXReader& reader);

/// Whether the bytes of lines are open at their end: continued by whatever comes behind them. They
/// must not be empty.
bool isOpen(std::string_view lines);

/// Whether they may be, which is quickly told.
bool mayBeOpen(std::string_view lines);

/// Whether a '#' in a text would begin a comment.
bool holdsComment(std::string_view text);

/// Whether `statement`, the bytes of a line or of several, says this and nothing else wherever it
/// stands: all of it is one statement, and the one behind it stays what it is. Whoever composes a
/// statement, or spaces one anew, has to ask this: a backslash at the end, or one in front of a
/// '#', may change what a line says.
bool readsBackAs(std::string_view statement, const Meaning& meaning);

}  // namespace kiv::detail
