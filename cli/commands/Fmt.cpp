#include <kiv/KDXFormatting.h>

#include "Commands.h"
#include "io/EditorConfig.h"
#include "io/ReplaceFile.h"
#include "text/UnifiedDiff.h"
#include "work/ReadChecked.h"

namespace kdx {
namespace {

struct Options {
    std::vector<std::string> files;
    std::string inputName;
    bool inPlace = false;
    bool check = false;
    bool diff = false;
};

kiv::KDXFormatting::Style styleOf(const std::string& path) {
    kiv::KDXFormatting::Style style;
    if (!path.empty()) style.indentWidth = configuredIndent(path).value_or(style.indentWidth);
    return style;
}

Outcome formatFile(const std::string& file, const Options& options, const Settings& settings) {
    if (options.inPlace && file == kStandardInput)
        throw Trouble("cannot be formatted in place: leave out -i, or name a file");
    Outcome outcome;
    const std::optional<Source> source = readChecked(file, Demand::lines, settings, outcome);
    if (!source) return outcome;

    std::string text = kiv::KDXFormatting::formatKDX(
        source->buffer, styleOf(file == kStandardInput ? settings.inputName : file));
    if (!options.inPlace && !options.check && !options.diff) {
        outcome.results = std::move(text);
        return outcome;
    }
    if (text == source->buffer) return outcome;
    if (options.inPlace) {
        replaceFile(file, *source, {text});
        return outcome;
    }
    outcome.status = Status::findings;
    if (options.diff)
        appendUnifiedDiff(outcome.results, source->name, source->buffer, text,
                          settings.outputColor);
    else
        outcome.results = source->name + '\n';
    return outcome;
}

Status run(const Options& options, const Settings& givenSettings) {
    Settings settings = givenSettings;
    settings.inputName = options.inputName;
    return workOnArguments(options.files, settings, [&](const std::string& file, std::size_t) {
        return formatFile(file, options, settings);
    });
}

}  // namespace

void addFmt(Program& program) {
    Command command(program, "fmt", "Indent by nesting, and space");
    Options& options = command.onRun(run);
    command.files(options.files);
    command.flag("-i,--in-place", options.inPlace, "Change the files themselves");
    command.flag("--check", options.check, "List the files that would change, status 1")
        .excludes("--in-place");
    command.flag("--diff", options.diff, "Print what would change as a unified diff")
        .excludes("--in-place");
    command.text("--stdin-filename NAME", options.inputName,
                 "The file that the standard input stands for, in messages and to .editorconfig");
    command.footer(
        "The text means what it meant, and comments stay. A text with a line that is no KDX is\n"
        "left alone. A level is two blanks wide, or as wide as indent_size of the .editorconfig "
        "files\n"
        "in and above the folder of the file asks for, up to 64; tabs are not written. Programs "
        "for\n"
        "Windows do not look for such files.\n\n"
        "Example:\n  kdx fmt -i configs/");
}

}  // namespace kdx
