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
    bool type = false;
};

RenameEdit editOf(const FilesAndPath& given, bool type) {
    const kiv::KDXSteps path = readObjectPath(given.path);
    if (given.rest.size() == 1 && type)
        return {{path, std::nullopt}, std::nullopt, given.rest.front()};
    if (given.rest.size() == 1) return {{path, std::nullopt}, given.rest.front(), std::nullopt};
    if (given.rest.size() == 2 && !type)
        return {{path, given.rest[0]}, given.rest[1], std::nullopt};
    throw Trouble(type ? "with --type, the new type alone stands behind PATH"
                       : "behind PATH stand a new name, or a parameter's name and its new one");
}

Status run(const Options& options, const Settings& settings) {
    const FilesAndPath given = splitFilesAndPath(options.arguments);
    const RenameEdit edit = editOf(given, options.type);
    return changeFiles(given.files, {{edit, 0, {edit.target.path}}}, options.change, settings);
}

}  // namespace

void addRename(Program& program) {
    Command command(program, "rename", "Give an object or a parameter another name");
    Options& options = command.onRun(run);
    command.filesAndPath(options.arguments, "NAME",
                         "The object's new name; or a parameter's name, and its new one");
    addChangeOptions(command, options.change);
    command.flag("--type", options.type, "It is the object's type that changes");
    command.footer(
        "PATH is the last argument that begins with a slash, and may be a pattern, as for unset.\n"
        "What has the new name already is not touched: the command then refuses.\n\n"
        "Example:\n"
        "  kdx rename -i set-up.kdx /Sample:s1 s2\n"
        "  kdx rename -i set-up.kdx '/Sample:*' gain Gain");
}

}  // namespace kdx
