#include "Failure.h"

#include <CLI/CLI.hpp>

#include "Arguments.h"
#include "Outline.h"
#include "text/ShownText.h"
#include "text/Suggestion.h"

namespace kdx {
namespace {

std::vector<std::string> optionNames(const Program& program) {
    CommandOutline command;
    for (const CLI::App* used : program.app.get_subcommands())
        command = outlineCommand(program, used->get_name());
    std::vector<std::string> names;
    for (const OptionOutline& option : optionsWith(command, outlineProgram(program)))
        names.insert(names.end(), option.names.begin(), option.names.end());
    return names;
}

std::string reason(const Program& program, const CLI::Error& error) {
    const std::vector<std::string> unknown = program.app.remaining(true);
    const bool hasCommand = !program.app.get_subcommands().empty();
    const bool isAboutUnknown =
        !hasCommand || error.get_exit_code() == static_cast<int>(CLI::ExitCodes::ExtrasError);
    if (unknown.empty() || !isAboutUnknown) return error.what();
    const std::string& word = unknown.front();
    const std::string name = word.substr(0, word.find('='));
    if (word.compare(0, 1, "-") == 0)
        return "unknown option: " + shown(name) + suggestion(name, optionNames(program));
    if (hasCommand) return error.what();
    return "unknown command: " + shownName(word) + suggestion(word, commandNames(program));
}

}  // namespace

std::string failureMessage(const Program& program, const CLI::Error& error) {
    return "kdx: " + reason(program, error) + "\nRun with --help for more information.\n";
}

}  // namespace kdx
