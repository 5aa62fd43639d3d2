#include <kiv/StringMapMapToKDX.h>

#include <algorithm>

#include "Commands.h"
#include "io/Source.h"
#include "maps/EventText.h"
#include "maps/MapCheck.h"
#include "maps/MapText.h"
#include "maps/NestedText.h"
#include "maps/SlashCheck.h"
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
    return map.count(path) != 0 || hasObjectIn(map, path);
}

/// The text of a map of paths, in JSON or in lines.
Outcome writeMap(const Source& source, kiv::StringMapMap map, const Options& options,
                 const Settings& settings) {
    if (depthOf(map) > settings.maxDepth)
        throw Trouble("has an object deeper than " + std::to_string(settings.maxDepth) +
                      " levels, the limit that --max-depth sets");

    Outcome outcome;
    Findings findings(kDefaultMaxErrors);
    makeCarried(map, findings);
    checkSlashes(map, findings);
    findings.append(outcome.diagnostics, source.name, settings, "");
    if (findings.errors() > 0) {
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

/// The text of a nested map, laid out as that of any other.
std::string writeNested(std::string_view json, const Options& options, const Settings& settings) {
    using Style = kiv::KDXFormatting::Style;
    if (!options.replacePath.empty())
        throw Trouble("is a nested map, in which --replace finds no path");
    Style style;
    style.indentWidth = static_cast<std::size_t>(options.indent);
    style.separators = options.compact ? Style::Separators::tight : Style::Separators::spaced;
    style.endComments =
        options.noEndComments ? Style::EndComments::unchanged : Style::EndComments::added;
    return readNested(json, settings, style);
}

Outcome writeFile(const std::string& file, const Options& options, const Settings& settings) {
    const Source source = readSource(file);
    const std::string_view text = source.text();
    if (options.events) return {readEvents(text), {}, Status::fine};
    const std::size_t begin = std::min(text.find_first_not_of(" \t\r\n"), text.size());
    const std::string_view first = text.substr(begin, 1);
    if (first.empty()) throw Trouble("is empty: not even a map without objects, which is {}");
    if (first == "[") return {writeNested(text, options, settings), {}, Status::fine};
    return writeMap(source, first == "/" ? readFlat(text) : readJson(text), options, settings);
}

Status run(const Options& options, const Settings& settings) {
    return workOnFile(options.file, settings, [&](const std::string& file, std::size_t) {
        return writeFile(file, options, settings);
    });
}

}  // namespace

void addWrite(Program& program) {
    Command command(program, "write", "Print a map, as kdx map prints it in any form, as KDX");
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
        "A map in JSON, flat lines and a nested map are told apart by their first character. A "
        "map\n"
        "that KDX cannot carry is refused: a line feed or a '#' in a value, a name with a "
        "character\n"
        "that names cannot hold. Behind a value that ends in a backslash stands a '#'. A '/' in a\n"
        "path always begins a level; a nested map may have it in a name.\n\n"
        "Example:\n  kdx map a.kdx | jq '.\"/Sample:s1\".gain = \"12\"' | kdx write > b.kdx");
}

}  // namespace kdx
