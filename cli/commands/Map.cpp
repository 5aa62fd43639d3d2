#include <kiv/KDXToStringMapMap.h>

#include <algorithm>
#include <optional>
#include <utility>

#include "Commands.h"
#include "io/Output.h"
#include "maps/ConflictCheck.h"
#include "maps/MapText.h"
#include "maps/NestedText.h"
#include "maps/SlashCheck.h"
#include "maps/Utf8Check.h"
#include "messages/Diagnostics.h"
#include "text/ShownText.h"
#include "work/ReadChecked.h"

namespace kdx {
namespace {

constexpr const char* kFirst = "first";
constexpr const char* kLast = "last";
constexpr const char* kError = "error";

struct Options {
    std::vector<std::string> files;
    std::vector<std::string> only;
    std::vector<std::string> without;
    std::optional<std::string> onConflict;
    bool flat = false;
    bool nested = false;
};

/// What was read of a file. The text is kept where it is looked at again.
struct Input {
    NamedText source;
    kiv::StringMapMap map;
};

bool takesType(std::string_view type, const Options& options) {
    const bool exclude = !options.without.empty();
    const std::vector<std::string>& types = exclude ? options.without : options.only;
    if (types.empty()) return true;
    return (std::find(types.begin(), types.end(), type) != types.end()) != exclude;
}

/// Reads one file; nothing when its map cannot be had whole: the outcome then says why.
std::optional<Input> readMap(const std::string& file, const Options& options,
                             const Settings& settings, Outcome& outcome) {
    std::optional<Source> source = readChecked(file, Demand::structure, settings, outcome);
    if (!source) return std::nullopt;
    const bool exclude = !options.without.empty();
    const std::vector<std::string>& types = exclude ? options.without : options.only;
    Input input{{source->name, {}}, {}};
    std::string& text = input.source.text;
    text = std::move(*source).takeText();
    kiv::KDXToStringMapMap::convert(text, input.map, {types.begin(), types.end()}, exclude);

    Findings findings(kDefaultMaxErrors);
    if (!options.nested) checkSlashes(text, input.map, findings);
    if (!options.flat) checkUtf8(text, input.map, findings);
    findings.append(outcome.diagnostics, input.source.name, settings, "");
    if (findings.errors() == 0) return input;
    outcome.raise(Status::trouble);
    return std::nullopt;
}

/// The maps of all files as one.
struct Merged {
    kiv::StringMapMap map;
    Conflicts conflicts;
    std::vector<NamedText> sources;
};

void tellLeftOut(const kiv::StringMapMap& map, const Settings& settings) {
    const std::vector<std::string> paths = leftOutOfFlat(map);
    if (paths.empty()) return;
    std::string diagnostics;
    appendProblem(diagnostics, "kdx",
                  {Severity::warning,
                   "left-out",
                   {},
                   "flat lines leave out objects without a parameter: " +
                       std::to_string(paths.size()) + ", the first is " + shown(paths.front())},
                  settings);
    writeError(diagnostics);
}

void print(const Merged& merged, const Options& options) {
    if (options.flat) return printFlat(merged.map);
    if (!options.nested) return printJson(merged.map);
    std::vector<std::string_view> texts;
    for (const NamedText& source : merged.sources) texts.emplace_back(source.text);
    printNested(texts, options.onConflict == kLast ? Taken::last : Taken::first,
                [&](std::string_view type) { return takesType(type, options); });
}

/// Tells of conflicts, unless a choice was made. @return whether they are trouble.
bool tellConflicts(const Merged& merged, const Options& options, const Settings& settings) {
    const bool isError = options.onConflict == kError;
    if (options.onConflict && !isError) return false;
    std::string diagnostics;
    appendConflicts(diagnostics, merged.sources, merged.conflicts,
                    isError ? Severity::error : Severity::warning, settings);
    writeError(diagnostics);
    return isError && !merged.conflicts.empty();
}

Status run(const Options& options, const Settings& settings) {
    const FileList list = listFiles(options.files, settings);
    const bool keepsTexts = options.nested || list.files.size() > 1;
    std::vector<std::optional<Input>> inputs(list.files.size());
    Merged merged;
    bool noneRead = true;
    const auto work = [&](const std::string& file, std::size_t index) {
        Outcome outcome;
        inputs[index] = readMap(file, options, settings, outcome);
        return outcome;
    };
    const auto then = [&](std::size_t index) {
        if (!inputs[index]) return;
        Input input = *std::exchange(inputs[index], std::nullopt);
        merge(merged.map, std::move(input.map), options.onConflict == kLast, merged.conflicts);
        if (keepsTexts) merged.sources.push_back(std::move(input.source));
        noneRead = false;
    };
    const Status status = workOnFiles(list, settings, work, then);
    if (noneRead) return status;
    if (tellConflicts(merged, options, settings)) return Status::trouble;
    if (options.flat) tellLeftOut(merged.map, settings);
    print(merged, options);
    return status;
}

}  // namespace

void addMap(Program& program) {
    Command command(program, "map", "Print the objects and parameters as JSON");
    Options& options = command.onRun(run);
    command.files(options.files);
    command.texts("--only TYPE", options.only,
                  "Take the top-level objects of this type alone; may be given several times");
    command
        .texts("--without TYPE", options.without,
               "Leave out the top-level objects of this type; may be given several times")
        .excludes("--only");
    command.flag("--flat", options.flat,
                 "Print a line PATH<tab>NAME<tab>VALUE for each parameter instead");
    command
        .flag("--nested", options.nested,
              "Print an array of objects instead, with type, name, parameters and objects")
        .excludes("--flat");
    command
        .text("--on-conflict WHICH", options.onConflict,
              "Where files have different values: take the first or the last, or take none and end "
              "with an error; without it, the first, with a warning")
        .oneOf({kFirst, kLast, kError});
    command.footer(
        "Several files make one map. Of values in one file, the first is taken, which readers see. "
        "A\n"
        "file with a problem is left out, and the exit status is 2. A name that holds a '/' reads "
        "as\n"
        "two levels, of which a warning tells; --nested keeps it whole.\n\n"
        "Example:\n  kdx map --only Sample set-up.kdx | jq '.\"/Sample:s1\"'");
}

}  // namespace kdx
