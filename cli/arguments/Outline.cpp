#include "Outline.h"

#include <CLI/CLI.hpp>

#include "Arguments.h"
#include "base/Status.h"
#include "text/ShownText.h"
#include "text/Suggestion.h"

namespace kdx {
namespace {

OptionOutline outlineOf(const CLI::Option& option) {
    OptionOutline outline;
    outline.description = option.get_description();
    outline.isArgument = option.get_positional();
    outline.isRequired = option.get_required();
    outline.isRepeated = option.get_items_expected_max() > 1;
    if (outline.isArgument) {
        outline.names.push_back(option.get_name(true));
        return outline;
    }
    for (const std::string& name : option.get_snames()) outline.names.push_back('-' + name);
    for (const std::string& name : option.get_lnames()) outline.names.push_back("--" + name);
    if (option.get_items_expected_max() > 0) outline.value = option.get_type_name();
    return outline;
}

void appendOptions(std::vector<OptionOutline>& outlines, const CLI::App& command) {
    for (const CLI::Option* option : command.get_options()) outlines.push_back(outlineOf(*option));
}

/// The outline of a command, or of the program.
CommandOutline outlineOf(const CLI::App& command) {
    CommandOutline outline{command.get_name(), command.get_description(), command.get_footer(), {}};
    appendOptions(outline.options, command);
    for (const CLI::App* group : command.get_subcommands([](const CLI::App*) { return true; }))
        if (group->get_name().empty()) appendOptions(outline.options, *group);
    return outline;
}

/// All commands, also those that the help does not show.
std::vector<const CLI::App*> allCommands(const Program& program) {
    const CLI::App& app = program.app;
    return app.get_subcommands(
        [](const CLI::App* command) { return !command->get_name().empty(); });
}

const CLI::App& commandNamed(const Program& program, const std::string& name) {
    for (const CLI::App* command : allCommands(program))
        if (command->get_name() == name) return *command;
    throw Trouble("there is no command " + shownName(name) +
                  suggestion(name, commandNames(program)));
}

}  // namespace

CommandOutline outlineProgram(const Program& program) {
    return outlineOf(program.app);
}

std::vector<CommandOutline> outlineCommands(const Program& program) {
    std::vector<CommandOutline> outlines;
    for (const CLI::App* command : allCommands(program))
        if (!command->get_group().empty()) outlines.push_back(outlineOf(*command));
    return outlines;
}

std::vector<std::string> commandNames(const Program& program) {
    std::vector<std::string> names;
    for (const CLI::App* command : allCommands(program)) names.push_back(command->get_name());
    return names;
}

CommandOutline outlineCommand(const Program& program, const std::string& name) {
    return outlineOf(commandNamed(program, name));
}

std::string helpText(const Program& program, const std::string& name) {
    const CLI::App& app = name.empty() ? program.app : commandNamed(program, name);
    const std::string words = program.app.get_name() + (name.empty() ? "" : ' ' + name);
    return app.get_formatter()->make_help(&app, words, CLI::AppFormatMode::Normal);
}

std::vector<OptionOutline> optionsWith(const CommandOutline& command,
                                       const CommandOutline& program) {
    std::vector<OptionOutline> options;
    for (const CommandOutline* outline : {&command, &program})
        for (const OptionOutline& option : outline->options)
            if (!option.isArgument && (outline == &command || option.names.back() != "--help"))
                options.push_back(option);
    return options;
}

}  // namespace kdx
