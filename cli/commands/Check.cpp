#include <kiv/KDXCheck.h>

#include <algorithm>
#include <optional>

#include "Commands.h"
#include "io/Output.h"
#include "io/ReplaceFile.h"
#include "io/Source.h"
#include "messages/Findings.h"
#include "messages/RuleChoice.h"
#include "text/ShownText.h"
#include "text/UnifiedDiff.h"
#include "text/WholeLines.h"
#include "work/Work.h"

namespace kdx {
namespace {

struct Options {
    std::vector<std::string> files;
    std::string format;
    std::vector<std::string> select;
    std::vector<std::string> ignore;
    std::optional<std::string> explain;
    std::size_t maxErrors = kDefaultMaxErrors;
    bool strict = false;
    bool fix = false;
    bool diff = false;
};

/// How many problems there are, in a file or in all of them.
struct Counts {
    std::size_t errors = 0;
    std::size_t warnings = 0;
    std::size_t files = 0;  ///< that have problems
};

/// What holds for the check of every file.
struct Checks {
    kiv::KDXCheck::Options check;
    MessageStyle style;
    bool strict = false;
    bool fix = false;
    bool diff = false;
    bool color = false;
};

/// The edits of all safe fixes that do not come in each other's way.
std::vector<kiv::KDXTextEdit> safeEdits(std::string_view text, kiv::KDXCheck::Options options) {
    options.maxProblems = kiv::KDXCheck::kUnlimited;
    const auto report = kiv::KDXCheck::check(text, options);
    std::vector<kiv::KDXTextEdit> edits;
    std::size_t end = 0;
    for (const kiv::KDXCheck::Problem& problem : report.problems) {
        if (!problem.fix || !problem.fix->safe || problem.fix->edits.front().offset < end) continue;
        for (const kiv::KDXTextEdit& edit : problem.fix->edits) {
            edits.push_back(edit);
            end = edit.offset + edit.length;
        }
    }
    return edits;
}

/// Shows what the fixes of a file would change.
Outcome showFixes(const std::string& file, const Checks& checks) {
    const Source source = readSource(file);
    const auto edits = safeEdits(source.buffer, checks.check);
    Outcome outcome;
    if (edits.empty()) return outcome;
    appendUnifiedDiff(outcome.results, source.name, source.buffer,
                      wholeLineEdits(source.buffer, edits), checks.color);
    outcome.status = Status::findings;
    return outcome;
}

void fixFile(Source& source, const std::string& file, const kiv::KDXCheck::Options& options) {
    if (file == kStandardInput)
        throw Trouble("cannot be fixed in place: add --diff, or leave out --fix");
    const auto edits = safeEdits(source.buffer, options);
    if (edits.empty()) return;
    const std::string mark(source.byteOrderMark());
    std::string text = kiv::applyEdits(source.buffer, edits);
    replaceFile(file, source, {text});
    source.buffer = std::move(text);
    source.hasByteOrderMark = !mark.empty() && source.buffer.compare(0, mark.size(), mark) == 0;
}

Outcome checkFile(const std::string& file, const Checks& checks, Counts& counts) {
    if (checks.diff) return showFixes(file, checks);
    Source source = readSource(file);
    if (checks.fix) fixFile(source, file, checks.check);
    const auto report = kiv::KDXCheck::check(source.buffer, checks.check);
    counts = {report.errors, report.warnings, report.errors + report.warnings > 0 ? 1U : 0U};
    Outcome outcome;
    Findings(source, report)
        .append(outcome.results, source.name, checks.style, "--max-errors 0 shows all");
    if (report.errors > 0 || (checks.strict && report.warnings > 0))
        outcome.status = Status::findings;
    return outcome;
}

/// "3 errors, 1 warning in 2 of 10 files"; nothing for a single file, or where all is well.
std::string summary(const std::vector<Counts>& all) {
    Counts sum;
    for (const Counts& counts : all) {
        sum.errors += counts.errors;
        sum.warnings += counts.warnings;
        sum.files += counts.files;
    }
    if (all.size() == 1 || sum.files == 0) return {};
    return counted(sum.errors, "error") + ", " + counted(sum.warnings, "warning") + " in " +
           std::to_string(sum.files) + " of " + counted(all.size(), "file") + '\n';
}

Status run(const Options& options, const Settings& givenSettings) {
    if (options.explain) {
        writeOutput(explainedRule(*options.explain));
        return Status::fine;
    }
    Settings settings = givenSettings;
    if (!options.format.empty()) settings.json = options.format == "json";
    Checks checks{checkOptions(settings, options.maxErrors),
                  outputStyle(settings),
                  options.strict,
                  options.fix,
                  options.diff,
                  settings.outputColor};
    if (options.format == "github") checks.style.format = Format::github;
    checks.check.rules = chosenRules(options.select, options.ignore);

    const FileList list = listFiles(options.files, settings);
    std::vector<Counts> counts(list.files.size());
    const auto work = [&](const std::string& file, std::size_t index) {
        return checkFile(file, checks, counts[index]);
    };
    const Status status = workOnFiles(list, settings, work);
    if (checks.style.format == Format::text) writeOutput(summary(counts));
    return status;
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
    command.text("--format FORMAT", options.format, "What findings look like: text, json or github")
        .oneOf({"text", "json", "github"});
    command.texts("--select RULES", options.select, "Check these rules alone, separated by commas");
    command.texts("--ignore RULES", options.ignore, "Leave out these rules, separated by commas");
    command.flag("--fix", options.fix, "Make the safe fixes in the files, and report what is left");
    command
        .flag("--diff", options.diff,
              "Print instead what the fixes would change, as a unified diff")
        .needs("--fix");
    command.text("--explain RULE", options.explain,
                 "Print what a rule is about, and check nothing");
    command.footer(
        "What is found goes to the standard output, what cannot be read to the standard error\n"
        "stream. The text of several files ends in a line that counts what was found. The format\n"
        "github makes notes of a workflow run, json one object a line, as --json does. A fix is\n"
        "safe when the text is read as before, and no new problem comes up.\n\n"
        "Example:\n  kdx check --strict --ignore never-closed,cut-end configs/ extra.kdx");
}

}  // namespace kdx
