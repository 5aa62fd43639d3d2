#pragma once

#include <kiv/StringMapMap.h>

#include <map>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "messages/Findings.h"

namespace kdx {

/// Parameters that have several values, by the paths of their objects.
using Conflicts = std::map<std::string, std::set<std::string>>;

/// A text that was read, and its name for messages.
struct NamedText {
    std::string name;
    std::string text;
};

/// Moves all of `more` into `map`. Where both have a parameter with different values, adds it to
/// the conflicts; the value of `more` is taken when `takesLast` is set.
void merge(kiv::StringMapMap& map, kiv::StringMapMap&& more, bool takesLast, Conflicts& conflicts);

/// Appends to `out`, for each conflict, where the first value stands and where each other one does,
/// with the given severity.
void appendConflicts(std::string& out, const std::vector<NamedText>& texts,
                     const Conflicts& conflicts, Severity severity, const Settings& settings);

}  // namespace kdx
