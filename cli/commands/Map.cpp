#include <kiv/KDXToStringMapMap.h>

#include <optional>
#include <utility>

#include "Commands.h"
#include "maps/MapText.h"
#include "maps/Utf8Check.h"
#include "work/ReadChecked.h"

namespace kdx {
namespace {

struct Options {
    std::vector<std::string> files;
    std::vector<std::string> only;
    std::vector<std::string> without;
    bool flat = false;
};

/// Moves everything that `map` does not have yet out of `more`.
void merge(kiv::StringMapMap& map, kiv::StringMapMap&& more) {
    if (map.empty()) map.swap(more);
    map.merge(more);
    for (auto& [path, parameters] : more) map.find(path)->second.merge(parameters);
}

/// The map of one file; nothing when it cannot be had whole: the outcome then says why.
std::optional<kiv::StringMapMap> readMap(const std::string& file, const Options& options,
                                         const Settings& settings, Outcome& outcome) {
    std::optional<Source> source = readChecked(file, Demand::structure, settings, outcome);
    if (!source) return std::nullopt;
    const bool exclude = !options.without.empty();
    const std::vector<std::string>& types = exclude ? options.without : options.only;
    const std::string name = source->name;
    const std::string text = std::move(*source).takeText();
    kiv::StringMapMap map;
    kiv::KDXToStringMapMap::convert(text, map, {types.begin(), types.end()}, exclude);
    if (options.flat) return map;

    Findings findings(kDefaultMaxErrors);
    checkUtf8(text, map, findings);
    if (findings.errors() == 0) return map;
    findings.append(outcome.diagnostics, name, settings, "");
    outcome.raise(Status::trouble);
    return std::nullopt;
}

Status run(const Options& options, const Settings& settings) {
    const FileList list = listFiles(options.files, settings);
    std::vector<std::optional<kiv::StringMapMap>> maps(list.files.size());
    kiv::StringMapMap map;
    bool noneRead = true;
    const auto work = [&](const std::string& file, std::size_t index) {
        Outcome outcome;
        maps[index] = readMap(file, options, settings, outcome);
        return outcome;
    };
    const auto then = [&](std::size_t index) {
        if (!maps[index]) return;
        merge(map, *std::exchange(maps[index], std::nullopt));
        noneRead = false;
    };
    const Status status = workOnFiles(list, settings, work, then);
    if (noneRead) return status;
    options.flat ? printFlat(map) : printJson(map);
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
    command.footer(
        "Several files make one map; what stands in several files keeps its first value. A file\n"
        "with a problem is left out, and the exit status is 2.\n\n"
        "Example:\n  kdx map --only Sample set-up.kdx | jq '.\"/Sample:s1\"'");
}

}  // namespace kdx
