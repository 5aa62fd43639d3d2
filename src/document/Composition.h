#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "document/StatementTree.h"
#include "parser/ReadBack.h"

// How statements are written, so that they look like their neighbours and say what they should.

namespace kiv::detail {

/// How the statements around a place are laid out.
struct Layout {
    std::string indentation;
    std::string step = "  ";  // one more level
    std::string lineEnd = "\n";
    std::string equals = " = ";
    std::string colon = ": ";
    std::size_t equalsColumn = 0;  // in which all '=' stand; 0 where they do not
    bool commentEnds = false;
};

/// So many siblings on either side are looked at, so that the cost of an edit does not grow with
/// what is around it.
constexpr int kLookAround = 8;

/// The layout behind a child of an object, kNone for in front of the first.
Layout layoutAt(const StatementTree& tree, Index parent, Index behind);

/// The blanks with which a statement begins.
std::string_view indentationOf(std::string_view bytes);

/// Bytes for a statement, and what they have to say.
struct Candidate {
    std::string bytes;
    Meaning meaning;
};

/// Whether a candidate says what it has to wherever it stands, or, without a line end, at the end
/// of a text.
bool readsBack(const Candidate& candidate);

/// The first of the candidates that reads back.
/// @throws kiv::data::invalid, with the reason why the first one does not.
std::string firstThatReads(const char* function, const std::vector<Candidate>& candidates);

/// Whole lines, line end included. @throws kiv::data::invalid for what they cannot carry.
std::string parameterLine(const char* function, const Layout& layout, std::string_view name,
                          std::string_view value);
std::string objectLine(const char* function, const Layout& layout, std::string_view type,
                       std::string_view name);
std::string endLine(const Layout& layout, std::string_view type, std::string_view name);
std::string actionLine(const char* function, const Layout& layout, std::string_view text);
std::string commentLine(const char* function, const Layout& layout, std::string_view comment);

/// What stands behind "NAME = " in a parameterLine().
std::string valueText(const char* function, std::string_view name, std::string_view value);

/// A comment with its '#'.
std::string withHash(std::string_view comment);

/// What names an object in the comment of its END.
std::string endComment(std::string_view type, std::string_view name);

/// A statement with another indentation in front of all of its lines, and another line end, where
/// that does not change what it says; else with its own.
std::string relaid(std::string_view bytes, std::string_view oldIndentation, const Layout& layout);

/// Lines that nothing behind them can continue: with the line end that they lack, and an empty line
/// where they are open.
std::string closed(std::string_view lines, std::string_view lineEnd);

}  // namespace kiv::detail
