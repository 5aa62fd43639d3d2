#include <kiv/ObjectKDXParser.h>
#include <kiv/StringUtilities.h>

#include <limits>
#include <optional>
#include <string>
#include <vector>

#include "Commands.h"
#include "text/JsonText.h"
#include "text/ShownText.h"
#include "work/ReadChecked.h"

namespace kdx {
namespace {

struct Options {
    std::string file;
    std::optional<std::string> name;
    std::string type;
    std::string group;
    int depth = -1;
};

using Lines = std::vector<std::string>;

void appendLines(std::string& out, const Lines& lines) {
    for (const std::string& line : lines) out.append(line).append(1, '\n');
}

void appendMatch(std::string& out, const std::string& key, const Lines& lines,
                 const Options& options, bool json) {
    if (json) {
        out.append(jsonText({{"key", key}, {"lines", &lines}})).append(1, '\n');
        return;
    }
    if (!options.group.empty()) out.append("# ").append(key).append(1, '\n');
    appendLines(out, lines);
}

std::string search(kiv::ObjectKDXParser& parser, const Options& options, bool json) {
    std::string text;
    if (options.name) {
        parser.parseForObject(*options.name, options.depth);
        const Lines& lines = parser.getResults();
        if (!lines.empty()) appendMatch(text, *options.name, lines, options, json);
        return text;
    }
    parser.parseForObjectsByType(options.type, options.depth, options.group);
    for (const auto& [key, lines] : parser.getTypeResults())
        appendMatch(text, key, lines, options, json);
    const Lines& unclosed = parser.getResults();  // of a match whose END is missing
    if (!unclosed.empty()) appendMatch(text, unclosed.front(), unclosed, options, json);
    return text;
}

Outcome findIn(const std::string& file, const Options& options, const Settings& settings) {
    Outcome outcome;
    std::optional<Source> source = readChecked(file, Demand::nesting, settings, outcome);
    if (!source) return outcome;
    kiv::ObjectKDXParser parser({});
    parser.getCommands() =
        kiv::StringUtilities::stringToVector(std::move(*source).takeText(), '\n');
    outcome.results = search(parser, options, settings.json);
    if (!outcome.results.empty()) return outcome;
    appendTrouble(outcome.diagnostics, displayName(file),
                  options.name ? "has no object with the name " + shownName(*options.name)
                               : "has no object of type " + shownName(options.type),
                  settings);
    outcome.status = Status::findings;
    return outcome;
}

Status run(const Options& options, const Settings& settings) {
    return workOnFile(options.file, settings, [&](const std::string& file, std::size_t) {
        return findIn(file, options, settings);
    });
}

}  // namespace

void addFind(Program& program) {
    Command command(program, "find", "Print the objects with a name or of a type");
    Options& options = command.onRun(run);
    command.file(options.file);
    Arguments searched = command.alternatives("Searched");
    searched.text("--name NAME", options.name, "The name; of an object without, its type");
    searched.text("--type TYPE", options.type, "The type");
    command
        .number("--depth N", options.depth, -1, std::numeric_limits<int>::max(),
                "Levels of nested objects to print; -1 prints all")
        .showDefault();
    command
        .text("--group TYPE", options.group,
              "Keep the last match in each object of this type, under its name")
        .needs("--type");
    command.footer(
        "An object inside a match belongs to it. Of several matches by type with the same type\n"
        "and name, the last is printed. The exit status is 1 when there is no match.\n\n"
        "Example:\n  kdx find set-up.kdx --type Channel --depth 0");
}

}  // namespace kdx
