#include <kiv/KDXToStringMapMap.h>

#include <algorithm>
#include <array>
#include <iterator>
#include <optional>
#include <string>
#include <utility>

#include "Commands.h"
#include "io/Output.h"
#include "maps/Utf8Check.h"
#include "text/JsonText.h"
#include "work/ReadChecked.h"

namespace kdx {
namespace {

struct Options {
    std::string before;
    std::string after;
};

using Parameters = kiv::StringMapMap::mapped_type;

/// Walks two sorted maps side by side and calls `report(key, before, after)` for each key of
/// either; null stands for what is not there.
template <typename Map, typename Report>
void walkBoth(const Map& before, const Map& after, Report report) {
    auto a = before.begin();
    auto b = after.begin();
    while (a != before.end() || b != after.end()) {
        const bool takeA = b == after.end() || (a != before.end() && a->first <= b->first);
        const bool takeB = a == before.end() || (b != after.end() && b->first <= a->first);
        report(takeA ? a->first : b->first, takeA ? &a->second : nullptr,
               takeB ? &b->second : nullptr);
        if (takeA) ++a;
        if (takeB) ++b;
    }
}

/// Puts the differences into words.
class Report {
public:
    explicit Report(const Settings& givenSettings) : settings(givenSettings) {}

    std::string text;

    void compareObjects(const std::string& path, const Parameters* before,
                        const Parameters* after) {
        static const Parameters none;
        if (before != nullptr && after != nullptr && *before == *after) return;
        addObject(path, before != nullptr, after != nullptr);
        walkBoth(before == nullptr ? none : *before, after == nullptr ? none : *after,
                 [&](const std::string& name, const std::string* old, const std::string* changed) {
                     if (old == nullptr || changed == nullptr || *old != *changed)
                         addParameter(path, name, old, changed);
                 });
    }

private:
    static const char* changeName(bool before, bool after) {
        if (!before) return "added";
        return after ? "changed" : "removed";
    }

    void addObject(const std::string& path, bool before, bool after) {
        if (!settings.json) return addLine(before == after ? ' ' : after ? '+' : '-', path);
        if (before == after) return;
        text += jsonText({{"change", changeName(before, after)}, {"path", path}}) + '\n';
    }

    void addParameter(const std::string& path, const std::string& name, const std::string* before,
                      const std::string* after) {
        if (!settings.json) {
            if (before != nullptr) addLine('-', "  " + name + " = " + *before);
            if (after != nullptr) addLine('+', "  " + name + " = " + *after);
            return;
        }
        JsonMembers members{{"change", changeName(before != nullptr, after != nullptr)},
                            {"path", path},
                            {"name", name}};
        if (before != nullptr) members.emplace_back("before", *before);
        if (after != nullptr) members.emplace_back("after", *after);
        text += jsonText(members) + '\n';
    }

    void addLine(char mark, const std::string& line) {
        const bool color = settings.outputColor && mark != ' ';
        if (color) text += mark == '-' ? "\033[31m" : "\033[32m";
        text.append(1, mark).append(1, ' ').append(line);
        text += color ? "\033[0m\n" : "\n";
    }

    const Settings& settings;
};

/// One of the files.
struct Side {
    std::string name;
    std::string text;
    kiv::StringMapMap map;
};

/// What `map` has and `other` has not, or has otherwise.
kiv::StringMapMap onlyIn(const kiv::StringMapMap& map, const kiv::StringMapMap& other) {
    kiv::StringMapMap only;
    for (const auto& [path, parameters] : map) {
        const auto counterpart = other.find(path);
        if (counterpart == other.end()) {
            only.emplace(path, parameters);
        } else if (counterpart->second != parameters) {
            std::set_difference(parameters.begin(), parameters.end(), counterpart->second.begin(),
                                counterpart->second.end(),
                                std::inserter(only[path], only[path].end()));
        }
    }
    return only;
}

/// Whether JSON can hold what differs; says what it cannot hold.
bool fitsJson(const Side& side, const Side& other, const Settings& settings) {
    Findings findings(kDefaultMaxErrors);
    checkUtf8(side.text, onlyIn(side.map, other.map), findings);
    std::string diagnostics;
    findings.append(diagnostics, side.name, settings, "");
    writeError(diagnostics);
    return findings.errors() == 0;
}

Status run(const Options& options, const Settings& settings) {
    std::array<Side, 2> sides;
    const auto read = [&](const std::string& file, std::size_t index) {
        Outcome outcome;
        std::optional<Source> source = readChecked(file, Demand::structure, settings, outcome);
        if (!source) return outcome;
        Side& side = sides.at(index);
        side.name = source->name;
        side.text = std::move(*source).takeText();
        kiv::KDXToStringMapMap::convert(side.text, side.map);
        return outcome;
    };
    if (options.before == kStandardInput && options.after == kStandardInput)
        throw Trouble("the standard input (-) can be read only once");
    const FileList list{{options.before, options.after}, {}, Status::fine};
    const Status status = workOnFiles(list, settings, read);
    if (status != Status::fine) return status;
    const auto& [before, after] = sides;
    if (settings.json) {
        const bool beforeFits = fitsJson(before, after, settings);
        if (!fitsJson(after, before, settings) || !beforeFits) return Status::trouble;
    }

    Report report(settings);
    walkBoth(before.map, after.map,
             [&](const std::string& path, const Parameters* old, const Parameters* changed) {
                 report.compareObjects(path, old, changed);
             });
    writeOutput(report.text);
    return report.text.empty() ? Status::fine : Status::findings;
}

}  // namespace

void addDiff(Program& program) {
    Command command(program, "diff", "Print what two files mean differently");
    Options& options = command.onRun(run);
    command.text("A", options.before, "The file before").required();
    command.text("B", options.after, "The file after").required();
    command.footer(
        "Objects and parameters are compared by path, as kdx map prints them: their order,\n"
        "comments and actions do not matter. The exit status is 1 when anything differs.\n\n"
        "Example:\n  kdx diff old.kdx new.kdx");
}

}  // namespace kdx
