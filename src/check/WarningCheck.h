#pragma once

#include <kiv/KDXReader.h>

#include <deque>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "check/EndCommentCheck.h"
#include "check/IndentationCheck.h"
#include "check/NameCheck.h"
#include "check/OpenObject.h"
#include "check/ProblemList.h"

namespace kiv::detail {

/// Finds what the readers take, but what looks like a mistake.
class WarningCheck {
public:
    WarningCheck(std::string_view wholeText, const KDXReader& givenReader,
                 ProblemList& givenProblems, NameCheck::Memory memory);

    /// Checks the reader's statement.
    void check();

    /// Checks what can be said at the end of the text only.
    void finish();

    /// Whether the check has to be made again, with memory for all names.
    bool isOutgrown() const { return names.isOutgrown(); }

private:
    /// An object that is open, and the rules that a comment on it ignores.
    struct Opened {
        OpenObject object;
        RuleSet ignored;
    };

    void noteIgnored();
    void checkByteOrderMark();
    void checkBytes();
    void checkObject();
    void checkParameter();
    void checkEnd();
    void checkIndentation(bool isEnd);
    void reportIndentation(const OpenObject& object);
    void checkEndIndentation();
    void checkEndComment();
    std::optional<KDXCheck::Fix> endCommentFix(const SeenName& object) const;
    void checkEndAsName();
    void checkHash();
    void checkSlash();
    void reportClosedAbove(const KDXPlace& closed);
    void reportNeverClosed(const Opened& opened, bool isInnermost);
    std::string_view kept(std::string_view name);
    SeenName objectName();

    std::string_view text;
    const KDXReader& reader;
    ProblemList& problems;
    bool hasNul;
    bool isUtf8;
    std::string_view comment;      // of the statement
    std::string_view indentation;  // of the statement
    KDXPlace begin;                // of the statement; for objects, parameters and ENDs
    std::string_view lastSource;
    RuleSet ignored;  // by comments, for the statement
    RuleSet pending;  // for the next one
    IndentationCheck levels;
    EndCommentCheck endComments;
    NameCheck names;
    std::vector<Opened> openObjects;
    std::deque<std::string> keptNames;  // those that do not lie in the text
};

}  // namespace kiv::detail
