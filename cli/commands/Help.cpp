#include "Commands.h"
#include "arguments/Outline.h"
#include "io/Output.h"

namespace kdx {
namespace {

struct Options {
    std::string command;
    const Program* program = nullptr;
};

Status run(const Options& options, const Settings& /*settings*/) {
    writeOutput(helpText(*options.program, options.command));
    return Status::fine;
}

}  // namespace

void addHelp(Program& program) {
    Command command(program, "help", "Print the help, or that of a command");
    Options& options = command.onRun(run);
    options.program = &program;
    command.text("COMMAND", options.command, "The command");
    command.footer("Example:\n  kdx help check");
}

}  // namespace kdx
