#include <algorithm>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "Commands.h"
#include "arguments/ChangeArguments.h"
#include "arguments/FilesAndPath.h"
#include "text/ShownText.h"

namespace kdx {
namespace {

struct Options {
    std::vector<std::string> arguments;
    ChangeOptions change;
    bool first = false;
    std::optional<std::string> before;
    std::optional<std::string> after;
};

SetEdit::Side sideOf(const Options& options) {
    if (options.first) return SetEdit::Side::first;
    if (options.before) return SetEdit::Side::before;
    return options.after ? SetEdit::Side::after : SetEdit::Side::usual;
}

Edit editOf(const std::string& path, const std::string& assignment, const Options& options) {
    const std::size_t equals = assignment.find('=');
    if (equals == std::string::npos)
        throw Trouble("NAME=VALUE is required in place of " + shownName(assignment));
    const kiv::KDXSteps steps = readObjectPath(path);
    return {SetEdit{steps, assignment.substr(0, equals), assignment.substr(equals + 1),
                    sideOf(options), options.before ? *options.before : options.after.value_or("")},
            0,
            {steps}};
}

Status run(const Options& options, const Settings& settings) {
    const FilesAndPath given = splitFilesAndPath(options.arguments);
    if (given.rest.empty()) throw Trouble("NAME=VALUE is required");
    std::vector<Edit> edits;
    std::set<std::string> names;
    for (const std::string& assignment : given.rest) {
        edits.push_back(editOf(given.path, assignment, options));
        const std::string name = assignment.substr(0, assignment.find('='));
        if (!names.insert(name).second) throw Trouble(shownName(name) + " is to be set twice");
    }
    // Each goes to the same place, so that the last one comes to stand in front of the others.
    if (options.first || options.after) std::reverse(edits.begin(), edits.end());
    return changeFiles(given.files, edits, options.change, settings);
}

}  // namespace

void addSet(Program& program) {
    Command command(program, "set", "Change values, and keep every other byte");
    Options& options = command.onRun(run);
    command.filesAndPath(options.arguments, "NAME=VALUE", "Parameters, and what they are to be");
    addChangeOptions(command, options.change);
    command.flag("--first", options.first, "Put a new parameter first in its object");
    command
        .text("--before NAME", options.before,
              "Put it in front of a parameter, or of an object: TYPE:NAME")
        .excludes("--first");
    command.text("--after NAME", options.after, "Put it behind one")
        .excludes("--first")
        .excludes("--before");
    command.footer(
        "PATH is the last argument that begins with a slash; files stand in front of it.\n"
        "Objects that are not there are made. The changed text is printed.\n\n"
        "Example:\n  kdx set -i set-up.kdx /Sample:s1 gain=20 mode=fast");
}

}  // namespace kdx
