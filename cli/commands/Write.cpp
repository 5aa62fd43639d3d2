#include <kiv/StringMapMapToKDX.h>

#include <algorithm>

#include "Commands.h"
#include "io/Source.h"
#include "maps/EventText.h"
#include "maps/MapCheck.h"
#include "maps/MapText.h"
#include "messages/Diagnostics.h"
#include "text/ShownText.h"
#include "work/Work.h"

namespace kdx {
namespace {

constexpr std::int32_t kMaxIndent = 100;

struct Options {
    std::string file;
    std::string replacePath;
    std::int32_t indent = kiv::StringMapMapToKDX::Format().indentWidth;
    bool compact = false;
    bool noEndComments = false;
    bool events = false;
};

std::size_t depthOf(const kiv::StringMapMap& map) {
    std::size_t depth = 0;
    for (const auto& object : map)
        depth = std::max(depth, static_cast<std::size_t>(
                                    std::count(object.first.begin(), object.first.end(), '/')));
    return depth;
}

/// Whether an object with this path is written: one of the map, or one around such a one.
bool hasObject(const kiv::StringMapMap& map, const std::string& path) {
    if (map.count(path) != 0) return true;
    const std::string inside = path + '/';
    const auto next = map.lower_bound(inside);
    return next != map.end() && next->first.compare(0, inside.size(), inside) == 0;
}

Outcome writeFile(const std::string& file, const Options& options, const Settings& settings) {
    const Source source = readSource(file);
    kiv::StringMapMap map = readJson(source.text());
    if (depthOf(map) > settings.maxDepth)
        throw Trouble("has an object deeper than " + std::to_string(settings.maxDepth) +
                      " levels, the limit that --max-depth sets");

    Outcome outcome;
    Findings findings(kDefaultMaxErrors);
    makeCarried(map, findings);
    if (findings.errors() > 0) {
        findings.append(outcome.diagnostics, source.name, settings, "");
        outcome.status = Status::trouble;
        return outcome;
    }

    const std::string& path = options.replacePath;
    if (!path.empty() && !hasObject(map, path))
        throw Trouble("has no object " + shown(path) + " to replace");
    kiv::StringMapMapToKDX::convert(path, map, outcome.results,
                                    {options.indent, !options.compact, !options.noEndComments});
    return outcome;
}

Outcome writeEvents(const std::string& file) {
    Outcome outcome;
    outcome.results = readEvents(readSource(file).text());
    return outcome;
}

Status run(const Options& options, const Settings& settings) {
    return workOnFile(options.file, settings, [&](const std::string& file, std::size_t) {
        return options.events ? writeEvents(file) : writeFile(file, options, settings);
    });
}

}  // namespace

void addWrite(Program& program) {
    Command command(program, "write", "Print a map, as kdx map prints it, as KDX");
    Options& options = command.onRun(run);
    command.file(options.file);
    command.number("--indent N", options.indent, 0, kMaxIndent, "Blanks for each level of nesting")
        .showDefault();
    command.flag("--compact", options.compact, "Put no blanks around ':' and '='");
    command.flag("--no-end-comments", options.noEndComments,
                 "Put no comment that names the object behind its END");
    command.text("--replace PATH", options.replacePath,
                 "Mark the object with this path with &replace");
    command.flag("--events", options.events,
                 "Read what kdx events prints, and print the text that it is of, byte for byte");
    command.footer(
        "A map that KDX cannot carry is refused: a line feed or a '#' in a value, a name with a\n"
        "character that names cannot hold. Behind a value that ends in a backslash stands a "
        "'#'.\n\n"
        "Example:\n  kdx map a.kdx | jq '.\"/Sample:s1\".gain = \"12\"' | kdx write > b.kdx");
}

}  // namespace kdx
