#pragma once

#include <kiv/KDXReader.h>

#include <string>
#include <string_view>

namespace kiv::detail {

/// What a statement says: its kind, its halves and its comment. For an action and a verbatim line,
/// whose halves are empty, `first` is the text without outer blanks.
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

/// Whether `statement`, the bytes of a line or of several, says this and nothing else wherever it
/// stands: all of it is one statement, and the one behind it stays what it is. Whoever composes a
/// statement, or spaces one anew, has to ask this: a backslash at the end, or one in front of a
/// '#', may change what a line says.
bool readsBackAs(std::string_view statement, const Meaning& meaning);

}  // namespace kiv::detail
