#include <optional>
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
    std::optional<std::string> into;
    std::optional<std::string> firstInto;
    std::optional<std::string> before;
    std::optional<std::string> after;
};

MoveEdit moveOf(const Target& target, const Options& options) {
    if (options.into) return {target, MoveEdit::Side::into, kiv::readPath(*options.into)};
    if (options.firstInto)
        return {target, MoveEdit::Side::firstInto, kiv::readPath(*options.firstInto)};
    if (options.before) return {target, MoveEdit::Side::before, readObjectPath(*options.before)};
    return {target, MoveEdit::Side::after, readObjectPath(options.after.value_or(""))};
}

Edit editOf(const Target& target, const Options& options) {
    const MoveEdit edit = moveOf(target, options);
    return {edit, 0, {edit.target.path, edit.place}};
}

Status run(const Options& options, const Settings& settings) {
    const FilesAndPath given = splitFilesAndPath(options.arguments);
    const kiv::KDXSteps path = readObjectPath(given.path);
    std::vector<Edit> edits;
    if (given.rest.empty()) edits.push_back(editOf({path, std::nullopt}, options));
    for (const std::string& name : given.rest) edits.push_back(editOf({path, name}, options));
    return changeFiles(given.files, edits, options.change, settings);
}

}  // namespace

void addMove(Program& program) {
    Command command(program, "move", "Put an object or a parameter elsewhere");
    Options& options = command.onRun(run);
    command.filesAndPath(options.arguments, "NAME",
                         "Parameters to move; without one, the object itself is moved");
    addChangeOptions(command, options.change);
    Arguments places = command.alternatives("Places");
    places.text("--into PATH", options.into, "Last in an object; '' is the top level");
    places.text("--first-into PATH", options.firstInto, "First in one");
    places.text("--before PATH", options.before, "In front of an object");
    places.text("--after PATH", options.after, "Behind one");
    command.footer(
        "The PATH of what is moved is the last argument that begins with a slash, and may be a\n"
        "pattern, as for unset. Its comments go along, and it is indented like its new\n"
        "neighbours. What has its name there already is not touched: the command then refuses.\n\n"
        "Example:\n  kdx move -i set-up.kdx /Sample:s1/Channel:A --into /Sample:s2");
}

}  // namespace kdx
