#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "Statements.h"
#include "base/Settings.h"

namespace kdx {

/// A statement of one text that the other does not have; both where a parameter has another value.
struct Difference {
    const Statement* before = nullptr;
    const Statement* after = nullptr;
};

/// What differs, in the order of the texts. The statements must outlive it. Where much differs, it
/// may be more than the least that could be said: see commonSequence(), which bounds the time.
std::vector<Difference> differences(const std::vector<Statement>& before,
                                    const std::vector<Statement>& after, StatementTable& table);

/// The same where the order of statements does not matter, which it changes: they are sorted by the
/// objects that they are in. Of repeated objects and parameters the first alone counts, as in a
/// map; of actions, verbatim lines and what is no KDX, each does.
std::vector<Difference> differencesInAnyOrder(std::vector<Statement>& before,
                                              std::vector<Statement>& after, StatementTable& table);

/// Puts differences into words: for people a line for each statement, behind the number of its
/// line, under the path of the object that it is in; or as JSON, an object for each difference.
class DifferenceText {
public:
    /// JSON names the file, unless that is empty. The numbers of lines are as wide as `lastLine`.
    DifferenceText(const StatementTable& statements, const Settings& givenSettings,
                   std::string_view namedFile, std::size_t lastLine);

    /// Appends to `text`. @throws Trouble for text that is no UTF-8 where JSON is asked for.
    void append(const Difference& difference);

    std::string text;

    /// The first path that was shown in which a '/' belongs to a name; empty when none was.
    std::string ambiguousPath;

private:
    using Number = StatementTable::Number;

    void appendJson(const Difference& difference);
    void appendStatement(char mark, const Statement& statement);
    void appendLine(char mark, std::string_view lineNumber, std::string_view line);
    const std::string& pathOf(Number object);

    const StatementTable& table;
    const Settings& settings;
    std::string_view file;
    std::size_t width = 0;                     // of the numbers of lines
    Number head = StatementTable::kRoot;       // the object whose path was shown last
    Number pathOwner = StatementTable::kRoot;  // the object whose path is `path`
    std::string path;
};

}  // namespace kdx
