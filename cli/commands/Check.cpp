#include <CLI/CLI.hpp>

#include <memory>

#include "Checker.h"
#include "Commands.h"
#include "Source.h"
#include "Work.h"

namespace kdx {
namespace {

struct Options {
    std::vector<std::string> files;
    std::size_t maxErrors = kDefaultMaxErrors;
    bool strict = false;
};

Outcome checkFile(const std::string& file, const Options& options, const Settings& settings) {
    const Source source = readSource(file);
    Findings findings = check(source, Demand::style, settings, options.maxErrors).findings;
    Outcome outcome;
    findings.append(outcome.diagnostics, source.name, settings, "--max-errors 0 shows all");
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

void addCheck(CLI::App& app, Session& session) {
    CLI::App* command = app.add_subcommand("check", "Report every problem of every file");
    const auto options = std::make_shared<Options>();
    addFiles(*command, options->files);
    command->add_flag("--strict", options->strict, "Let warnings count as problems");
    command
        ->add_option("--max-errors", options->maxErrors,
                     "Errors, and as many warnings, to show for a file; 0 shows all")
        ->type_name("N")
        ->check(CLI::Range(std::size_t{0}, kMaxCount).description(""))
        ->capture_default_str();
    command->footer("Example:\n  kdx check --strict configs/ extra.kdx");
    command->callback([options, &session] { session.status = run(*options, session.settings); });
}

}  // namespace kdx
