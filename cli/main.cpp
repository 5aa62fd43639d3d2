#include <CLI/CLI.hpp>

#include <cstdlib>
#include <iostream>
#include <sstream>
#include <thread>

#include "Commands.h"
#include "Version.h"
#include "arguments/Failure.h"
#include "io/Output.h"

namespace kdx {
namespace {

constexpr const char* kColorAuto = "auto";
constexpr const char* kColorAlways = "always";
constexpr const char* kColorNever = "never";
constexpr std::size_t kMaxJobs = 1024;

/// What shells say of a program that a closed pipe ended.
constexpr int kClosedStatus = 141;

constexpr const char* kDescription =
    "Checks, formats, searches, converts and compares KDX, a line-oriented, hierarchical command\n"
    "language.";

constexpr const char* kFooter =
    "Without FILE, or with - for it, commands read the standard input. A directory stands for the\n"
    "*.kdx files in it and below it, apart from hidden ones and links. In a GLOB, * stands for\n"
    "any text without a '/', ** for any text, ? for a character, [abc] for one of these.\n\n"
    "Exit status: 0 fine; 1 findings, or would change, differs, not there; 2 trouble with the\n"
    "arguments, the input or the output; 141 the reader of the output has closed the pipe.\n\n"
    "Example:\n  kdx check configs/ && kdx map configs/set-up.kdx";

bool colorOn(const std::string& when, bool isTerminal) {
    if (when != kColorAuto) return when == kColorAlways;
    if (!terminalFollowsControls()) return false;
    const char* noColor = std::getenv("NO_COLOR");  // NOLINT(concurrency-mt-unsafe): one thread
    return isTerminal && (noColor == nullptr || *noColor == '\0');
}

void addSettings(CLI::App& app, Settings& settings, std::string& color) {
    app.set_version_flag("--version", std::string("kdx ") + kVersion, "Print the version");
    Arguments arguments(app);
    arguments.text("--color WHEN", color, "Colour in messages: auto, always or never")
        .oneOf({kColorAuto, kColorAlways, kColorNever});
    arguments.flag("--json", settings.json, "Print diagnostics as one JSON object a line");
    arguments.number("-j,--jobs N", settings.jobs, 1, kMaxJobs,
                     "Files to work on at the same time");
    arguments.texts("--exclude GLOB", settings.excludes,
                    "Leave out of directories what has such a name; or, with a '/' in GLOB, such a "
                    "path below the directory; may be given several times");
    arguments
        .number("--max-depth N", settings.maxDepth, 0, kMaxCount,
                "Levels that objects may be nested; fmt and strip take any")
        .showDefault();
}

int runCommands(int argc, char** argv) {
    CLI::App app(kDescription, "kdx");
    Program program{app, {}, Status::fine};
    Settings& settings = program.settings;
    std::string color = kColorAuto;
    settings.jobs = std::max(1U, std::thread::hardware_concurrency());
    app.require_subcommand(1);
    app.fallthrough();
    app.allow_windows_style_options(false);  // which begin with a slash, as paths of objects do
    app.footer(kFooter);
    app.failure_message([&program](const CLI::App*, const CLI::Error& error) {
        return failureMessage(program, error);
    });
    app.get_formatter()->column_width(32);
    addSettings(app, settings, color);
    app.parse_complete_callback([&] {
        settings.outputColor = colorOn(color, outputIsTerminal());
        settings.errorColor = colorOn(color, errorIsTerminal());
    });
    for (const auto add : kCommands) add(program);
    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError& error) {
        std::ostringstream output;
        const bool failed = app.exit(error, output, std::cerr) != 0;
        if (failed) program.status = Status::trouble;
        writeOutput(output.str());
    }
    finishOutput();
    return static_cast<int>(program.status);
}

}  // namespace
}  // namespace kdx

int main(int argc, char** argv) {
    try {
        kdx::prepareStreams();
        return kdx::runCommands(argc, argv);
    } catch (const kdx::OutputClosed&) {
        return kdx::kClosedStatus;
    } catch (const std::exception& error) {
        kdx::writeError(std::string("kdx: ") + error.what() + '\n');
        return static_cast<int>(kdx::Status::trouble);
    }
}
