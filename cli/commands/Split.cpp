#include <kiv/ExtractActionOrStateFromKDX.h>
#include <kiv/KDXDocument.h>

#include <string>
#include <utility>
#include <vector>

#include "Commands.h"
#include "io/Source.h"
#include "text/Comments.h"
#include "text/JsonText.h"
#include "work/Work.h"

namespace kdx {
namespace {

namespace extraction = kiv::ExtractActionOrStateFromKDX;
using kiv::KDXDocument;
using kiv::MiniKDXParser;

struct Options {
    std::string file;
    bool actionsOnly = false;
    bool stateOnly = false;
    bool bare = false;
};

using Runs = std::vector<std::pair<extraction::KDXLineType, std::string>>;

const char* nameOf(extraction::KDXLineType kind) {
    return kind == extraction::Action ? "actions" : "state";
}

/// The runs of statements as they are written, but for their comments.
Runs runsOf(std::string text) {
    KDXDocument document(std::move(text));
    removeComments(document);
    Runs runs;
    using Node = KDXDocument::Node;
    for (Node node = document.next(document.root()); node != Node::none;
         node = document.next(node)) {
        const MiniKDXParser::lineType kind = document.kind(node);
        if (kind == MiniKDXParser::lineBlank) continue;
        const auto type =
            kind == MiniKDXParser::lineAction ? extraction::Action : extraction::State;
        if (runs.empty() || runs.back().first != type) runs.emplace_back(type, std::string());
        runs.back().second += document.source(node);
    }
    for (auto& run : runs)
        if (run.second.back() == '\n') run.second.pop_back();
    return runs;
}

void appendRun(std::string& out, const Runs::value_type& run, const Options& options, bool json) {
    const auto& [kind, text] = run;
    if (options.actionsOnly && kind != extraction::Action) return;
    if (options.stateOnly && kind != extraction::State) return;
    if (json) {
        out.append(jsonText({{"kind", nameOf(kind)}, {"text", text}})).append(1, '\n');
        return;
    }
    if (!options.actionsOnly && !options.stateOnly)
        out.append("# ").append(nameOf(kind)).append(1, '\n');
    out.append(text).append(1, '\n');
}

Outcome splitFile(const std::string& file, const Options& options, const Settings& settings) {
    Outcome outcome;
    Source source = readSource(file);
    const Runs runs = options.bare
                          ? extraction::extractActionOrStateFromKDX(std::move(source).takeText())
                          : runsOf(std::move(source.buffer));
    for (const auto& run : runs) appendRun(outcome.results, run, options, settings.json);
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
    command.flag("--bare", options.bare,
                 "Print each statement in a line of its own, without outer blanks, also where it "
                 "then reads back as another one");
    command.footer(
        "Statements are printed as they are written. Where a value ends in a backslash, a bare "
        "'#'\n"
        "stays, which keeps the line from being continued.\n\n"
        "Example:\n  kdx split --actions session.kdx");
}

}  // namespace kdx
