#include "ConflictCheck.h"

#include <utility>

#include "PathReader.h"
#include "text/ShownText.h"

namespace kdx {
namespace {

using Part = kiv::KDXReader::Part;
using Parameter = std::pair<std::string, std::string>;  // path and name

bool isIn(const Conflicts& conflicts, const Parameter& parameter) {
    const auto object = conflicts.find(parameter.first);
    return object != conflicts.end() && object->second.count(parameter.second) != 0;
}

std::string placeOf(const NamedText& text, const kiv::KDXPlace& place) {
    return text.name + ':' + std::to_string(place.line) + ':' + std::to_string(place.column);
}

/// Finds the values of the conflicts in the texts, one text after the other.
class ConflictFinder {
public:
    ConflictFinder(const Conflicts& givenConflicts, Severity givenSeverity)
        : conflicts(givenConflicts), severity(givenSeverity) {}

    void search(const NamedText& text, Findings& findings) {
        PathReader paths(text.text);
        const kiv::KDXReader& reader = paths.statement();
        std::set<Parameter> seen;  // in this text, of which the first value counts
        while (paths.next()) {
            if (reader.kind() != kiv::MiniKDXParser::lineParameter) continue;
            const Parameter parameter(paths.path(), reader.first());
            if (!isIn(conflicts, parameter) || !seen.insert(parameter).second) continue;
            compare(parameter, text, reader, findings);
        }
    }

private:
    struct First {
        std::string value;
        std::string place;
    };

    void compare(const Parameter& parameter, const NamedText& text, const kiv::KDXReader& reader,
                 Findings& findings) {
        const kiv::KDXPlace place = reader.placeOf(Part::second);
        const auto [entry, isNew] = firsts.try_emplace(parameter);
        First& first = entry->second;
        if (isNew) first = {std::string(reader.second()), placeOf(text, place)};
        if (first.value == reader.second()) return;
        findings.add({severity, "conflict", placeIn(text.text, place),
                      shown(parameter.first) + ", " + shownName(parameter.second) + " is " +
                          shownName(reader.second()) + " here, and " + shownName(first.value) +
                          " at " + shown(first.place)});
    }

    const Conflicts& conflicts;
    Severity severity;
    std::map<Parameter, First> firsts;
};

}  // namespace

void merge(kiv::StringMapMap& map, kiv::StringMapMap&& more, bool takesLast, Conflicts& conflicts) {
    if (map.empty()) map.swap(more);
    map.merge(more);
    for (auto& [path, parameters] : more) {
        auto& merged = map.find(path)->second;
        merged.merge(parameters);
        for (auto& [name, value] : parameters) {
            std::string& held = merged.find(name)->second;
            if (held == value) continue;
            conflicts[path].insert(name);
            if (takesLast) held = std::move(value);
        }
    }
}

void appendConflicts(std::string& out, const std::vector<NamedText>& texts,
                     const Conflicts& conflicts, Severity severity, const Settings& settings) {
    if (conflicts.empty()) return;
    ConflictFinder finder(conflicts, severity);
    for (const NamedText& text : texts) {
        Findings findings(kDefaultMaxErrors);
        finder.search(text, findings);
        findings.append(out, text.name, settings, "");
    }
}

}  // namespace kdx
