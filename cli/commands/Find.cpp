#include <kiv/KDXDocument.h>
#include <kiv/KDXFormatting.h>
#include <kiv/ObjectKDXParser.h>
#include <kiv/StringUtilities.h>

#include <limits>
#include <optional>
#include <string>
#include <vector>

#include "Commands.h"
#include "text/JsonText.h"
#include "text/ShownText.h"
#include "work/ReadChecked.h"

namespace kdx {
namespace {

using kiv::KDXDocument;
using kiv::KDXReader;
using kiv::MiniKDXParser;
using Lines = std::vector<std::string>;

struct Options {
    std::string file;
    std::optional<std::string> name;
    std::string type;
    std::string group;
    int depth = -1;
    bool bare = false;
};

/// An object that was searched for, the outermost that fits.
struct Match {
    std::string key;
    std::size_t line = 0;
    std::string_view source;  ///< all of its statements
};

std::string_view nameOf(const KDXReader& reader) {
    return reader.second().empty() ? reader.first() : reader.second();
}

/// Finds the matches of a text, in its order.
class Search {
public:
    Search(std::string_view givenText, const Options& givenOptions)
        : text(givenText), options(givenOptions), reader(givenText) {}

    std::vector<Match> run() {
        while (reader.next()) {
            if (reader.kind() == MiniKDXParser::lineObject) open();
            if (reader.kind() == MiniKDXParser::lineEnd) close();
        }
        if (isOpen) matches.back().source = text.substr(begin);
        return std::move(matches);
    }

private:
    struct Group {
        std::size_t depth;
        std::string name;
    };

    std::size_t offset() const {
        return static_cast<std::size_t>(reader.source().data() - text.data());
    }

    void open() {
        if (isOpen) return;
        if (!options.group.empty() && reader.first() == options.group)
            groups.push_back({reader.depth(), std::string(reader.second())});
        const bool fits =
            options.name ? nameOf(reader) == *options.name : reader.first() == options.type;
        if (!fits) return;
        isOpen = true;
        depth = reader.depth();
        begin = offset();
        matches.push_back({key(), reader.lineNumber(), {}});
    }

    void close() {
        if (isOpen && reader.depth() == depth) {
            matches.back().source = text.substr(begin, offset() + reader.source().size() - begin);
            isOpen = false;
        }
        if (!groups.empty() && groups.back().depth == reader.depth()) groups.pop_back();
    }

    std::string key() const {
        if (options.name) return *options.name;
        if (!groups.empty() && !groups.back().name.empty()) return groups.back().name;
        return std::string(reader.first()).append(1, ':').append(reader.second());
    }

    std::string_view text;
    const Options& options;
    KDXReader reader;
    std::vector<Match> matches;
    std::vector<Group> groups;  // that are open, outside of matches
    bool isOpen = false;        // whether a match is
    std::size_t depth = 0;      // of the match
    std::size_t begin = 0;
};

/// Removes the objects that lie deeper in the match than the depth that is asked for.
void prune(KDXDocument& document, std::size_t depth) {
    using Node = KDXDocument::Node;
    std::size_t level = 0;  // of the statement, in the match
    for (Node node = document.next(document.root()); node != Node::none;) {
        const Node behind = document.next(node);
        const MiniKDXParser::lineType kind = document.kind(node);
        if (kind == MiniKDXParser::lineObject && level > depth) {
            const Node sibling = document.nextSibling(node);
            document.remove(node);
            node = sibling;
            continue;
        }
        if (kind == MiniKDXParser::lineObject) ++level;
        if (kind == MiniKDXParser::lineEnd) --level;
        node = behind;
    }
}

/// The statements of a match as they are written, indented as if it stood at the top level.
std::string statementsOf(const Match& match, const Options& options) {
    kiv::KDXFormatting::Style style;
    style.separators = kiv::KDXFormatting::Style::Separators::unchanged;
    style.blankLines = match.source.size();
    if (options.depth < 0) return formatKDX(match.source, style);
    KDXDocument document{std::string(match.source)};
    prune(document, static_cast<std::size_t>(options.depth));
    return formatKDX(document.text(), style);
}

Lines linesOf(std::string_view text) {
    return kiv::StringUtilities::stringToVector(std::string(text), '\n');
}

/// A comment above the matches in a group. Behind a final backslash, which would continue it,
/// stands a '#'.
std::string headOf(const std::string& key) {
    return "# " + key + (!key.empty() && key.back() == '\\' ? " #\n" : "\n");
}

std::string search(const std::string& text, const Options& options, bool json) {
    std::string out;
    for (const Match& match : Search(text, options).run()) {
        const std::string statements = statementsOf(match, options);
        if (json) {
            const Lines lines = linesOf(statements);
            out += jsonText({{"key", match.key}, {"line", match.line}, {"lines", &lines}}) + '\n';
            continue;
        }
        if (!options.group.empty()) out += headOf(match.key);
        out += statements;
    }
    return out;
}

void appendBare(std::string& out, const std::string& key, const Lines& lines,
                const Options& options, bool json) {
    if (json) {
        out.append(jsonText({{"key", key}, {"lines", &lines}})).append(1, '\n');
        return;
    }
    if (!options.group.empty()) out += headOf(key);
    for (const std::string& line : lines) out.append(line).append(1, '\n');
}

/// The matches as the library's search puts them together anew.
std::string searchBare(const std::string& text, const Options& options, bool json) {
    kiv::ObjectKDXParser parser(linesOf(text));
    std::string out;
    if (options.name) {
        parser.parseForObject(*options.name, options.depth);
        const Lines& lines = parser.getResults();
        if (!lines.empty()) appendBare(out, *options.name, lines, options, json);
        return out;
    }
    parser.parseForObjectsByType(options.type, options.depth, options.group);
    for (const auto& [key, lines] : parser.getTypeResults())
        appendBare(out, key, lines, options, json);
    const Lines& unclosed = parser.getResults();  // of a match whose END is missing
    if (!unclosed.empty()) appendBare(out, unclosed.front(), unclosed, options, json);
    return out;
}

Outcome findIn(const std::string& file, const Options& options, const Settings& settings) {
    Outcome outcome;
    std::optional<Source> source = readChecked(file, Demand::nesting, settings, outcome);
    if (!source) return outcome;
    const std::string text = std::move(*source).takeText();
    outcome.results = options.bare ? searchBare(text, options, settings.json)
                                   : search(text, options, settings.json);
    if (!outcome.results.empty()) return outcome;
    appendTrouble(outcome.diagnostics, displayName(file),
                  options.name ? "has no object with the name " + shownName(*options.name)
                               : "has no object of type " + shownName(options.type),
                  settings);
    outcome.status = Status::findings;
    return outcome;
}

Status run(const Options& options, const Settings& settings) {
    return workOnFile(options.file, settings, [&](const std::string& file, std::size_t) {
        return findIn(file, options, settings);
    });
}

}  // namespace

void addFind(Program& program) {
    Command command(program, "find", "Print the objects with a name or of a type");
    Options& options = command.onRun(run);
    command.file(options.file);
    Arguments searched = command.alternatives("Searched");
    searched.text("--name NAME", options.name, "The name; of an object without, its type");
    searched.text("--type TYPE", options.type, "The type");
    command
        .number("--depth N", options.depth, -1, std::numeric_limits<int>::max(),
                "Levels of nested objects to print; -1 prints all")
        .showDefault();
    command
        .text("--group TYPE", options.group,
              "Name above each match the object of this type that it is in")
        .needs("--type");
    command.flag("--bare", options.bare,
                 "Print objects and parameters alone, put together anew; of several matches with "
                 "the same type and name, or in the same group, the last");
    command.footer(
        "Every match is printed as it is written, with comments and actions, and indented anew.\n"
        "An object inside a match belongs to it. The exit status is 1 when there is no match.\n\n"
        "Example:\n  kdx find set-up.kdx --type Channel --depth 0");
}

}  // namespace kdx
