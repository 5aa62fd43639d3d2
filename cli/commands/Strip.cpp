#include <kiv/KDXDocument.h>

#include <optional>
#include <string>
#include <string_view>

#include "Commands.h"
#include "work/ReadChecked.h"

namespace kdx {
namespace {

using kiv::KDXDocument;
using kiv::MiniKDXParser;
using Node = KDXDocument::Node;

void stripComment(KDXDocument& document, Node node) {
    if (document.isComment(node)) return document.remove(node);
    if (document.kind(node) == MiniKDXParser::lineVerbatim) return;
    if (document.source(node).find('#') == std::string_view::npos) return;
    document.setComment(node, "");
}

Outcome stripFile(const std::string& file, const Settings& settings) {
    Outcome outcome;
    std::optional<Source> source = readChecked(file, Demand::lines, settings, outcome);
    if (!source) return outcome;
    KDXDocument document(std::move(*source).takeText());
    for (Node node = document.next(document.root()); node != Node::none;) {
        const Node behind = document.next(node);
        stripComment(document, node);
        node = behind;
    }
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
