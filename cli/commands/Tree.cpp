#include <kiv/KDXReader.h>

#include <cstddef>
#include <limits>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "Commands.h"
#include "messages/Diagnostics.h"
#include "text/ShownText.h"
#include "work/ReadChecked.h"

namespace kdx {
namespace {

using kiv::MiniKDXParser;

struct Options {
    std::string file;
    std::size_t depth = std::numeric_limits<std::size_t>::max();
};

struct Node {
    std::string label;
    std::size_t depth = 0;
    std::size_t parameters = 0;
    std::size_t objects = 0;  ///< directly inside
    bool isLast = true;       ///< of those in the same object
};

/// The objects in the order of the text.
std::vector<Node> readTree(std::string_view text) {
    std::vector<Node> nodes;
    std::vector<std::size_t> open;         // the indices of the open objects
    std::vector<std::size_t> lastAtDepth;  // the last object of each open one, and of the text
    constexpr std::size_t kNone = std::numeric_limits<std::size_t>::max();
    lastAtDepth.push_back(kNone);
    for (kiv::KDXReader reader(text); reader.next();) {
        if (reader.kind() == MiniKDXParser::lineParameter) ++nodes[open.back()].parameters;
        if (reader.kind() == MiniKDXParser::lineEnd) {
            open.pop_back();
            lastAtDepth.pop_back();
        }
        if (reader.kind() != MiniKDXParser::lineObject) continue;
        if (!open.empty()) ++nodes[open.back()].objects;
        if (lastAtDepth.back() != kNone) nodes[lastAtDepth.back()].isLast = false;
        lastAtDepth.back() = nodes.size();
        lastAtDepth.push_back(kNone);
        std::string title(reader.first());
        if (!reader.second().empty()) title.append(": ").append(reader.second());
        nodes.push_back({std::move(title), open.size()});
        open.push_back(nodes.size() - 1);
    }
    return nodes;
}

std::string counts(const Node& node, bool hidesObjects) {
    std::string text = " (" + counted(node.parameters, "parameter");
    if (hidesObjects && node.objects > 0) text += ", " + counted(node.objects, "object");
    return text + ")\n";
}

std::string draw(const std::vector<Node>& nodes, std::size_t depth) {
    std::string out;
    std::vector<std::string> margins{""};  // in front of the objects at each depth
    for (const Node& node : nodes) {
        if (node.depth >= depth) continue;
        margins.resize(node.depth + 1);
        out += margins.back();
        if (node.depth > 0) out += node.isLast ? "└── " : "├── ";
        out += node.label + counts(node, node.depth + 1 == depth);
        margins.push_back(margins.back());
        if (node.depth > 0) margins.back() += node.isLast ? "    " : "│   ";
    }
    return out;
}

Outcome drawFile(const std::string& file, const Options& options, const Settings& settings) {
    Outcome outcome;
    const std::optional<Source> source = readChecked(file, Demand::structure, settings, outcome);
    if (source) outcome.results = draw(readTree(source->text()), options.depth);
    return outcome;
}

Status run(const Options& options, const Settings& settings) {
    return workOnFile(options.file, settings, [&](const std::string& file, std::size_t) {
        return drawFile(file, options, settings);
    });
}

}  // namespace

void addTree(Program& program) {
    Command command(program, "tree", "Draw how the objects are nested");
    Options& options = command.onRun(run);
    command.file(options.file);
    command.number("--depth N", options.depth, 1, kMaxCount, "Levels to draw");
    command.footer("Example:\n  kdx tree --depth 2 set-up.kdx");
}

}  // namespace kdx
