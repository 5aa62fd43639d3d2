#include <algorithm>
#include <string>
#include <vector>

#include "Commands.h"
#include "arguments/ChangeArguments.h"
#include "edits/EditJson.h"
#include "io/Source.h"

namespace kdx {
namespace {

struct Options {
    std::vector<std::string> files;
    std::string edits = kStandardInput;
    ChangeOptions change;
};

Status run(const Options& options, const Settings& settings) {
    const bool readsInput =
        std::count(options.files.begin(), options.files.end(), kStandardInput) > 0;
    if (readsInput && options.edits == kStandardInput)
        throw Trouble("the standard input has the edits: name a file, or --edits FILE");
    const std::vector<kdx::Edit> edits = readEdits(readSource(options.edits).text());
    return changeFiles(options.files, edits, options.change, settings);
}

}  // namespace

void addEdit(Program& program) {
    Command command(program, "edit", "Make a list of edits, all or none of them");
    Options& options = command.onRun(run);
    command.files(options.files).required();
    command.text("--edits EDITS", options.edits, "The edits; the standard input when left out");
    addChangeOptions(command, options.change);
    command.footer(
        "The edits are made in their order, each one JSON object on a line:\n"
        "  {\"set\": \"/Sample:s1\", \"name\": \"gain\", \"value\": \"20\"}\n"
        "      may have \"first\": true, or \"before\" or \"after\": a neighbour's name\n"
        "  {\"unset\": \"/Sample:*\", \"name\": \"note\"}\n"
        "  {\"rename\": \"/Sample:s1\", \"to\": \"s2\"}\n"
        "      may have \"name\": the parameter; \"type\": the object's new type\n"
        "  {\"move\": \"/Sample:s2\", \"into\": \"/Archive\"}\n"
        "      may have \"name\", \"first\": true; \"before\" or \"after\" in place of \"into\"\n"
        "Without \"name\", the edit is one of the object. A path may also be a list of steps, for\n"
        "types and names that hold a slash: [[\"Sample\", \"a/b\"], [\"Channel\", \"A\"]].\n"
        "A file in which one edit cannot be made stays as it is.\n\n"
        "Example:\n  kdx edit -i set-up.kdx < edits.jsonl");
}

}  // namespace kdx
