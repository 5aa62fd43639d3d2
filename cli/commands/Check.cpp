#include <kiv/KDXCheck.h>

#include "Commands.h"
#include "io/Source.h"
#include "messages/Findings.h"
#include "work/Work.h"

namespace kdx {
namespace {

struct Options {
    std::vector<std::string> files;
    std::size_t maxErrors = kDefaultMaxErrors;
    bool strict = false;
};

Outcome checkFile(const std::string& file, const Options& options, const Settings& settings) {
    const Source source = readSource(file);
    const auto report =
        kiv::KDXCheck::check(source.buffer, checkOptions(settings, options.maxErrors));
    Findings findings(source, report);
    Outcome outcome;
    findings.append(outcome.results, source.name, outputStyle(settings),
                    "--max-errors 0 shows all");
    if (findings.errors() > 0 || (options.strict && findings.warnings() > 0))
        outcome.status = Status::findings;
    return outcome;
}

Status run(const Options& options, const Settings& settings) {
    return workOnArguments(options.files, settings, [&](const std::string& file, std::size_t) {
        return checkFile(file, options, settings);
    });
}

}  // namespace

void addCheck(Program& program) {
    Command command(program, "check", "Report every problem of every file");
    Options& options = command.onRun(run);
    command.files(options.files);
    command.flag("--strict", options.strict, "Let warnings count as problems");
    command
        .number("--max-errors N", options.maxErrors, 0, kMaxCount,
                "Errors, and as many warnings, to show for a file; 0 shows all")
        .showDefault();
    command.footer(
        "What is found goes to the standard output, what cannot be read to the standard error\n"
        "stream.\n\n"
        "Example:\n  kdx check --strict configs/ extra.kdx");
}

}  // namespace kdx
