#pragma once

#include <string>
#include <vector>

namespace kdx {

struct Program;

/// What the completions and the man pages say about an option or an argument.
struct OptionOutline {
    std::vector<std::string> names;  ///< with their dashes; of an argument, its one name
    std::string value;               ///< what stands for its value; empty for a flag
    std::string description;
    bool isArgument = false;
    bool isRequired = false;
    bool isRepeated = false;
};

/// What they say about a command.
struct CommandOutline {
    std::string name;
    std::string description;
    std::string footer;
    std::vector<OptionOutline> options;  ///< and arguments
};

/// The outline of the program without its commands, in the order of its help.
CommandOutline outlineProgram(const Program& program);

/// The outlines of the commands that its help shows.
std::vector<CommandOutline> outlineCommands(const Program& program);

/// The names of all commands.
std::vector<std::string> commandNames(const Program& program);

/// The outline of one command. @throws Trouble when there is none with this name.
CommandOutline outlineCommand(const Program& program, const std::string& name);

/// The help of one command, or of the program when the name is empty.
/// @throws Trouble when there is no command with this name.
std::string helpText(const Program& program, const std::string& name);

/// The options, without arguments, that may stand behind a command: its own and the program's.
std::vector<OptionOutline> optionsWith(const CommandOutline& command,
                                       const CommandOutline& program);

}  // namespace kdx
