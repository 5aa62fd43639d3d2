#include <kiv/KDXPath.h>
#include <kiv/KDXToStringMapMap.h>

#include <optional>
#include <string>

#include "Commands.h"
#include "maps/MapText.h"
#include "text/JsonText.h"
#include "text/ShownText.h"
#include "work/ReadChecked.h"

namespace kdx {
namespace {

struct Options {
    std::string file;
    std::string path;
    std::optional<std::string> name;
};

using Parameters = kiv::StringMapMap::mapped_type;

Outcome notThere(const Source& source, const std::string& what, const Settings& settings) {
    Outcome outcome;
    appendTrouble(outcome.diagnostics, source.name, "has no " + what, settings);
    outcome.status = Status::findings;
    return outcome;
}

std::string textOf(const Parameters& parameters, bool json) {
    std::string text;
    if (json) {
        appendJson(text, parameters, "");
        return text + '\n';
    }
    for (const auto& [name, value] : parameters)
        text.append(name).append(" = ").append(value).append(1, '\n');
    return text;
}

std::string textOf(const std::string& value, bool json) {
    if (!json) return value + '\n';
    std::string text;
    appendJsonString(text, value);
    return text + '\n';
}

Outcome getFrom(const std::string& file, const Options& options, const Settings& settings) {
    Outcome outcome;
    std::optional<Source> source = readChecked(file, Demand::structure, settings, outcome);
    if (!source) return outcome;
    const kiv::KDXPath path(options.path);
    if (path.numComponent() == 0) throw Trouble("the empty path names no object");

    kiv::StringMapMap map;
    kiv::KDXToStringMapMap::convert(std::move(*source).takeText(), map, {path.getType(0)});
    const std::string key = path.getSubPath(0, path.numComponent());
    const auto object = map.find(key);
    if (object == map.end()) return notThere(*source, "object " + shown(key), settings);
    if (!options.name) {
        outcome.results = textOf(object->second, settings.json);
        return outcome;
    }
    const auto parameter = object->second.find(*options.name);
    if (parameter == object->second.end())
        return notThere(*source, "parameter " + shownName(*options.name) + " in " + shown(key),
                        settings);
    outcome.results = textOf(parameter->second, settings.json);
    return outcome;
}

Status run(const Options& options, const Settings& settings) {
    return workOnFile(options.file, settings, [&](const std::string& file, std::size_t) {
        return getFrom(file, options, settings);
    });
}

}  // namespace

void addGet(Program& program) {
    Command command(program, "get", "Print one object's parameters, or one value");
    Options& options = command.onRun(run);
    command.file(options.file).required();
    command.text("PATH", options.path, "The object, as in kdx map: /Sample:s1/Channel:A")
        .required();
    command.text("NAME", options.name, "The parameter whose value to print");
    command.footer(
        "The exit status is 1 when the object or the parameter is not there.\n\n"
        "Example:\n  gain=$(kdx get set-up.kdx /Sample:s1 gain)");
}

}  // namespace kdx
