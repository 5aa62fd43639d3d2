#include <string>
#include <vector>

#include "Commands.h"
#include "arguments/ChangeArguments.h"
#include "arguments/FilesAndPath.h"

namespace kdx {
namespace {

struct Options {
    std::vector<std::string> arguments;
    ChangeOptions change;
};

Status run(const Options& options, const Settings& settings) {
    const FilesAndPath given = splitFilesAndPath(options.arguments);
    const kiv::KDXSteps path = readObjectPath(given.path);
    std::vector<Edit> edits;
    if (given.rest.empty()) edits.push_back({UnsetEdit{{path, std::nullopt}}, 0, {path}});
    for (const std::string& name : given.rest)
        edits.push_back({UnsetEdit{{path, name}}, 0, {path}});
    return changeFiles(given.files, edits, options.change, settings);
}

}  // namespace

void addUnset(Program& program) {
    Command command(program, "unset", "Remove parameters or objects, with their comments");
    Options& options = command.onRun(run);
    command.filesAndPath(options.arguments, "NAME",
                         "Parameters to remove; without one, the object itself goes");
    addChangeOptions(command, options.change);
    command.footer(
        "PATH is the last argument that begins with a slash, and may be a pattern: * stands for\n"
        "any type, name or object, ** for any number of levels. The exit status is 1 when there\n"
        "is nothing to remove.\n\n"
        "Example:\n  kdx unset -i set-up.kdx '/Sample:*/**' comment");
}

}  // namespace kdx
