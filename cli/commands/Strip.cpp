#include <kiv/KDXDocument.h>

#include <optional>
#include <string>

#include "Commands.h"
#include "text/Comments.h"
#include "work/ReadChecked.h"

namespace kdx {
namespace {

Outcome stripFile(const std::string& file, const Settings& settings) {
    Outcome outcome;
    std::optional<Source> source = readChecked(file, Demand::lines, settings, outcome);
    if (!source) return outcome;
    kiv::KDXDocument document(std::move(*source).takeText());
    removeComments(document);
    document.write(outcome.results);
    return outcome;
}

Status run(const std::string& argument, const Settings& settings) {
    return workOnFile(argument, settings, [&](const std::string& file, std::size_t) {
        return stripFile(file, settings);
    });
}

}  // namespace

void addStrip(Program& program) {
    Command command(program, "strip", "Remove the comments and keep the meaning");
    command.file(command.onRun(run));
    command.footer(
        "Verbatim lines stay whole. Where a value ends in a backslash, a bare '#' stays, which\n"
        "keeps the line from being continued.\n\n"
        "Example:\n  kdx strip set-up.kdx > bare.kdx");
}

}  // namespace kdx
