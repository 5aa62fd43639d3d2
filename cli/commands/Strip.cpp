#include <kiv/KDXReader.h>

#include <optional>
#include <string>
#include <string_view>

#include "Commands.h"
#include "ReadChecked.h"

namespace kdx {
namespace {

using kiv::KDXReader;

/// Whether a statement of these bytes says what the reader's says, wherever it stands: the one
/// behind it stays what it is.
bool saysTheSame(const std::string& statement, const KDXReader& reader) {
    const std::string text = statement + "behind = 1\n";
    KDXReader bare(text);
    return bare.next() && bare.source() == statement && bare.kind() == reader.kind() &&
           bare.first() == reader.first() && bare.second() == reader.second() &&
           bare.text() == reader.text();
}

void appendWithLineEnd(std::string& out, std::string_view source) {
    out.append(source);
    if (source.empty() || source.back() != '\n') out += '\n';
}

/// The bytes up to where the comment, or the blanks in front of it, begin. What a comment swallowed
/// goes with it.
std::string withoutComment(const KDXReader& reader) {
    const kiv::KDXPlace end = reader.placeOf(KDXReader::Part::text, reader.text().size());
    const std::size_t length = end.offset - reader.placeInSource(0).offset;
    const std::string_view lineEnd = reader.lineEnd();
    return std::string(reader.source().substr(0, length)).append(lineEnd.empty() ? "\n" : lineEnd);
}

void appendStripped(std::string& out, const KDXReader& reader) {
    const bool isVerbatim = reader.kind() == kiv::MiniKDXParser::lineVerbatim;
    if (isVerbatim || reader.comment().empty()) return appendWithLineEnd(out, reader.source());
    if (reader.text().empty()) return;
    const std::string bare = withoutComment(reader);
    appendWithLineEnd(out, saysTheSame(bare, reader) ? std::string_view(bare) : reader.source());
}

Outcome stripFile(const std::string& file, const Settings& settings) {
    Outcome outcome;
    const std::optional<CheckedSource> source = readChecked(file, Demand::lines, settings, outcome);
    if (!source) return outcome;
    outcome.results.reserve(source->buffer.size());
    for (KDXReader reader(source->text()); reader.next();) appendStripped(outcome.results, reader);
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
