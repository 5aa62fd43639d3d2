#include <kiv/ExtractActionOrStateFromKDX.h>

#include <string>

#include "Commands.h"
#include "io/Source.h"
#include "text/JsonText.h"
#include "work/Work.h"

namespace kdx {
namespace {

namespace extraction = kiv::ExtractActionOrStateFromKDX;

struct Options {
    std::string file;
    bool actionsOnly = false;
    bool stateOnly = false;
};

const char* nameOf(extraction::KDXLineType kind) {
    return kind == extraction::Action ? "actions" : "state";
}

Outcome splitFile(const std::string& file, const Options& options, const Settings& settings) {
    Outcome outcome;
    const std::string text = readSource(file).takeText();
    for (const auto& [kind, run] : extraction::extractActionOrStateFromKDX(text)) {
        if (options.actionsOnly && kind != extraction::Action) continue;
        if (options.stateOnly && kind != extraction::State) continue;
        std::string& out = outcome.results;
        if (settings.json) {
            out.append(jsonText({{"kind", nameOf(kind)}, {"text", run}})).append(1, '\n');
            continue;
        }
        if (!options.actionsOnly && !options.stateOnly)
            out.append("# ").append(nameOf(kind)).append(1, '\n');
        out.append(run).append(1, '\n');
    }
    return outcome;
}

Status run(const Options& options, const Settings& settings) {
    return workOnFile(options.file, settings, [&](const std::string& file, std::size_t) {
        return splitFile(file, options, settings);
    });
}

}  // namespace

void addSplit(Program& program) {
    Command command(program, "split", "Print the runs of actions and of state, without comments");
    Options& options = command.onRun(run);
    command.file(options.file);
    command.flag("--actions", options.actionsOnly, "Print the actions alone");
    command.flag("--state", options.stateOnly, "Print everything but the actions")
        .excludes("--actions");
    command.footer("Example:\n  kdx split --actions session.kdx");
}

}  // namespace kdx
