#include <kiv/KDXReader.h>

#include <optional>
#include <string>
#include <string_view>

#include "Blank.h"
#include "Commands.h"
#include "LogicalLines.h"
#include "ReadChecked.h"

namespace kdx {
namespace {

void appendUnchanged(std::string& out, const LogicalLines& line) {
    for (const Piece& piece : line.pieces()) out.append(piece.lineText).append(1, '\n');
}

/// Appends the physical lines up to the end of `kept`, with which the logical line begins. What a
/// comment swallowed goes with it.
void appendBeginning(std::string& out, const LogicalLines& line, std::string_view kept) {
    const Piece& last = line.pieceAt(kept.size() - 1);
    for (const Piece* piece = line.pieces().data(); piece != &last; ++piece)
        out.append(piece->lineText).append(1, '\n');
    out.append(last.lineText.substr(0, last.skipped + kept.size() - last.begin));
    const std::string_view lastLine = line.pieces().back().lineText;
    if (!lastLine.empty() && lastLine.back() == '\r') out += '\r';
    out += '\n';
}

void appendStripped(std::string& out, LogicalLines& line) {
    const std::string_view text = line.text();
    const std::size_t comment = findComment(text);
    const bool hasComment =
        comment != std::string_view::npos && line.classify() != kiv::MiniKDXParser::lineVerbatim;
    if (!hasComment) return appendUnchanged(out, line);
    const std::string_view kept = withoutTrailingBlanks(text.substr(0, comment));
    if (kept.empty()) return;
    if (kept.back() == '\\') return appendUnchanged(out, line);  // would continue the line
    appendBeginning(out, line, kept);
}

/// Goes on to the next statement that is more than a comment. At the end, the reader says of the
/// nothing there that it is blank.
void goOn(kiv::KDXReader& reader) {
    while (reader.next() && reader.kind() == kiv::MiniKDXParser::lineBlank) continue;
}

/// Whether two texts say the same, comments and blank lines aside.
bool sameMeaning(std::string_view before, std::string_view after) {
    kiv::KDXReader a(before);
    kiv::KDXReader b(after);
    do {
        goOn(a);
        goOn(b);
        if (a.kind() != b.kind() || a.first() != b.first() || a.second() != b.second() ||
            withoutTrailingBlanks(a.text()) != withoutTrailingBlanks(b.text()))
            return false;
    } while (a.kind() != kiv::MiniKDXParser::lineBlank);
    return true;
}

Outcome stripFile(const std::string& file, const Settings& settings) {
    Outcome outcome;
    const std::optional<CheckedSource> source = readChecked(file, Demand::lines, settings, outcome);
    if (!source) return outcome;
    outcome.results.reserve(source->buffer.size());
    for (LogicalLines lines(source->text()); lines.next();) appendStripped(outcome.results, lines);
    if (!sameMeaning(source->text(), outcome.results))
        throw Trouble("would mean something else without its comments");
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
        "Verbatim lines stay whole. So does a line whose comment keeps a backslash from ending\n"
        "it, which would then be continued.\n\n"
        "Example:\n  kdx strip set-up.kdx > bare.kdx");
}

}  // namespace kdx
