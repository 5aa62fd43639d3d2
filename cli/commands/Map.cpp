#include <CLI/CLI.hpp>

#include <kiv/KDXToStringMapMap.h>

#include <memory>
#include <set>

#include "Commands.h"
#include "MapText.h"
#include "ReadChecked.h"

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

Status run(const Options& options, const Settings& settings) {
    const bool exclude = !options.without.empty();
    const std::vector<std::string>& named = exclude ? options.without : options.only;
    const std::set<std::string> types(named.begin(), named.end());

    const FileList list = listFiles(options.files, settings);
    std::vector<kiv::StringMapMap> maps(list.files.size());
    // Never freed: the process ends behind it, and it takes as long to free as to print.
    static auto& map = *new kiv::StringMapMap;
    const auto work = [&](const std::string& file, std::size_t index) {
        Outcome outcome;
        std::optional<CheckedSource> source =
            readChecked(file, Demand::structure, settings, outcome);
        if (!source) return outcome;
        const std::string text = std::move(*source).takeText();
        kiv::KDXToStringMapMap::convert(text, maps[index], types, exclude);
        return outcome;
    };
    const auto then = [&](std::size_t index) { merge(map, std::move(maps[index])); };
    const Status status = workOnFiles(list, settings, work, then);
    options.flat ? printFlat(map) : printJson(map);
    return status;
}

}  // namespace

void addMap(CLI::App& app, Session& session) {
    CLI::App* command = app.add_subcommand("map", "Print the objects and parameters as JSON");
    const auto options = std::make_shared<Options>();
    addFiles(*command, options->files);
    CLI::Option* only = command->add_option("--only", options->only,
                                            "Take the top-level objects of this type alone; may "
                                            "be given several times");
    CLI::Option* without =
        command->add_option("--without", options->without,
                            "Leave out the top-level objects of this type; may be given several "
                            "times");
    for (CLI::Option* option : {only, without}) option->type_name("TYPE")->allow_extra_args(false);
    only->excludes(without);
    command->add_flag("--flat", options->flat,
                      "Print a line PATH<tab>NAME<tab>VALUE for each parameter instead");
    command->footer(
        "Several files make one map; what stands in several files keeps its first value.\n\n"
        "Example:\n  kdx map --only Sample set-up.kdx | jq '.\"/Sample:s1\"'");
    command->callback([options, &session] { session.status = run(*options, session.settings); });
}

}  // namespace kdx
