#include "Commands.h"
#include "arguments/Outline.h"
#include "io/Output.h"

namespace kdx {
namespace {

struct Options {
    std::string shell;
    const Program* program = nullptr;
};

using Commands = std::vector<CommandOutline>;

std::string shellText(const std::string& text) {
    std::string result = "'";
    for (const char c : text) result += c == '\'' ? std::string("'\\''") : std::string(1, c);
    return result + '\'';
}

std::string firstLine(const std::string& text) {
    return text.substr(0, text.find('\n'));
}

std::string wordsOf(const std::vector<OptionOutline>& options) {
    std::string words;
    for (const OptionOutline& option : options)
        for (const std::string& name : option.names) words += (words.empty() ? "" : " ") + name;
    return words;
}

std::string namesOf(const Commands& commands, const char* separator) {
    std::string names;
    for (const CommandOutline& command : commands)
        names += (names.empty() ? "" : separator) + command.name;
    return names;
}

std::string bashCompletion(const CommandOutline& program, const Commands& commands) {
    std::string cases;
    for (const CommandOutline& command : commands)
        cases += "            " + command.name +
                 ") words=" + shellText(wordsOf(optionsWith(command, program))) + "; break ;;\n";
    return "_kdx() {\n"
           "    local current=${COMP_WORDS[COMP_CWORD]} word\n"
           "    local words=" +
           shellText(namesOf(commands, " ") + ' ' + wordsOf(program.options)) +
           "\n"
           "    for word in \"${COMP_WORDS[@]:1:COMP_CWORD-1}\"; do\n"
           "        case $word in\n" +
           cases +
           "        esac\n"
           "    done\n"
           "    COMPREPLY=()\n"
           "    [[ $current != -* && $words == -* ]] && return  # a file\n"
           "    COMPREPLY=($(compgen -W \"$words\" -- \"$current\"))\n"
           "}\n"
           "complete -o default -F _kdx kdx\n";
}

std::string zshOption(const OptionOutline& option) {
    std::string description;
    for (const char c : firstLine(option.description))
        description += std::string(c == ':' || c == '[' || c == ']' ? "\\" : "") + c;
    std::string lines;
    for (const std::string& name : option.names) {
        const std::string value = option.value.empty() ? "" : ":" + option.value + ":";
        lines += " \\\n        " + shellText(name + '[' + description + ']' + value);
    }
    return lines;
}

std::string zshOptions(const std::vector<OptionOutline>& options) {
    std::string lines;
    for (const OptionOutline& option : options) lines += zshOption(option);
    return lines;
}

std::string zshCompletion(const CommandOutline& program, const Commands& commands) {
    std::string names;
    std::string cases;
    for (const CommandOutline& command : commands) {
        names += "        " + shellText(command.name + ':' + firstLine(command.description)) + '\n';
        cases += "    " + command.name + ") _arguments" +
                 zshOptions(optionsWith(command, program)) + " \\\n        '*:file:_files' ;;\n";
    }
    return "#compdef kdx\n"
           "local -a commands=(\n" +
           names +
           "    )\n"
           "case ${words[(r)(" +
           namesOf(commands, "|") + ")]} in\n" + cases + "    *) _arguments" +
           zshOptions(program.options) +
           " \\\n        '1:command:{_describe command commands}' ;;\n"
           "esac\n";
}

std::string fishOption(const std::string& condition, const OptionOutline& option) {
    std::string line = "complete -c kdx" + condition;
    for (const std::string& name : option.names)
        line += name[1] == '-' ? " -l " + name.substr(2) : " -s " + name.substr(1);
    return line + (option.value.empty() ? "" : " -x") + " -d " +
           shellText(firstLine(option.description)) + '\n';
}

std::string fishCompletion(const CommandOutline& program, const Commands& commands) {
    std::string text;
    for (const CommandOutline& command : commands)
        text += "complete -c kdx -f -n __fish_use_subcommand -a " + command.name + " -d " +
                shellText(firstLine(command.description)) + '\n';
    for (const OptionOutline& option : program.options) text += fishOption("", option);
    for (const CommandOutline& command : commands)
        for (const OptionOutline& option : command.options)
            if (!option.isArgument)
                text +=
                    fishOption(" -n '__fish_seen_subcommand_from " + command.name + "'", option);
    return text;
}

Status run(const Options& options, const Settings& /*settings*/) {
    const CommandOutline program = outlineProgram(*options.program);
    const Commands commands = outlineCommands(*options.program);
    if (options.shell == "bash") writeOutput(bashCompletion(program, commands));
    if (options.shell == "zsh") writeOutput(zshCompletion(program, commands));
    if (options.shell == "fish") writeOutput(fishCompletion(program, commands));
    return Status::fine;
}

}  // namespace

void addCompletion(Program& program) {
    Command command(program, "completion", "Print the completions for a shell");
    Options& options = command.onRun(run);
    options.program = &program;
    command.text("SHELL", options.shell, "bash, zsh or fish")
        .required()
        .oneOf({"bash", "zsh", "fish"});
    command.footer("Example:\n  source <(kdx completion bash)");
}

}  // namespace kdx
