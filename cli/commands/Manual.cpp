#include "Commands.h"
#include "Version.h"
#include "arguments/Outline.h"
#include "io/Output.h"

namespace kdx {
namespace {

struct Options {
    std::string command;
    const Program* program = nullptr;
};

constexpr std::string_view kExampleTitle = "Example:\n";

/// Text as the page shows it, whatever its characters mean to troff.
std::string escaped(std::string_view text) {
    std::string result;
    bool atLineBegin = true;
    for (const char c : text) {
        if (atLineBegin && (c == '.' || c == '\'')) result += "\\&";
        if (c == '\\') result += "\\e";
        if (c == '-') result += "\\-";
        if (c != '\\' && c != '-') result += c;
        atLineBegin = c == '\n';
    }
    return result;
}

std::string bold(std::string_view text) {
    return "\\fB" + escaped(text) + "\\fR";
}

std::string pageName(const std::string& command) {
    return command.empty() ? "kdx" : "kdx-" + command;
}

std::string header(const std::string& name, const std::string& description) {
    return ".TH " + escaped(name) + " 1 \"\" \"kdx " + kVersion + "\" \"User Commands\"\n" +
           ".SH NAME\n" + escaped(name) + " \\- " + escaped(description) + '\n';
}

std::string argumentsOf(const CommandOutline& command) {
    std::string text;
    for (const OptionOutline& option : command.options) {
        if (!option.isArgument) continue;
        const std::string name = option.names.front() + (option.isRepeated ? "..." : "");
        text += option.isRequired ? ' ' + name : " [" + name + ']';
    }
    return text;
}

std::string optionList(const CommandOutline& command) {
    std::string text = ".SH OPTIONS\n";
    for (const OptionOutline& option : command.options) {
        std::string names;
        for (const std::string& name : option.names)
            names += (names.empty() ? "" : ", ") + bold(name);
        if (!option.value.empty()) names += " \\fI" + escaped(option.value) + "\\fR";
        text += ".TP\n" + names + '\n' + escaped(option.description) + '\n';
    }
    return text;
}

/// The paragraphs of a footer, the example in a section of its own.
std::string notes(std::string_view footer) {
    const std::size_t title = footer.find(kExampleTitle);
    std::string text;
    if (title > 0) text += ".SH NOTES\n" + escaped(footer.substr(0, title));
    return text + ".SH EXAMPLES\n.nf\n" + escaped(footer.substr(title + kExampleTitle.size())) +
           "\n.fi\n";
}

std::string commandPage(const CommandOutline& command) {
    return header(pageName(command.name), command.description) + ".SH SYNOPSIS\n" +
           bold("kdx " + command.name) + " [OPTIONS]" + escaped(argumentsOf(command)) + '\n' +
           optionList(command) + ".PP\nThe options of\n.BR kdx (1)\nhold for every command.\n" +
           notes(command.footer) + ".SH SEE ALSO\n.BR kdx (1)\n";
}

std::string programPage(const CommandOutline& program,
                        const std::vector<CommandOutline>& commands) {
    std::string list = ".SH COMMANDS\n";
    for (const CommandOutline& command : commands)
        list += ".TP\n.BR " + escaped(pageName(command.name)) + " (1)\n" +
                escaped(command.description) + '\n';
    return header("kdx", "work with KDX files") + ".SH SYNOPSIS\n" + bold("kdx") +
           " [OPTIONS] COMMAND [ARGUMENTS]\n.SH DESCRIPTION\n" + escaped(program.description) +
           '\n' + list + optionList(program) + notes(program.footer);
}

Status run(const Options& options, const Settings& /*settings*/) {
    const Program& program = *options.program;
    writeOutput(options.command.empty()
                    ? programPage(outlineProgram(program), outlineCommands(program))
                    : commandPage(outlineCommand(program, options.command)));
    return Status::fine;
}

}  // namespace

void addManual(Program& program) {
    Command command(program, "manual", "Print the man page, or that of a command");
    Options& options = command.onRun(run);
    options.program = &program;
    command.text("COMMAND", options.command, "The command");
    command.footer("Example:\n  kdx manual check | man -l -");
}

}  // namespace kdx
