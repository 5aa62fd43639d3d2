#include "ChangeFiles.h"

#include <kiv/Error.h>
#include <kiv/KDXText.h>

#include <optional>

#include "io/ReplaceFile.h"
#include "messages/Diagnostics.h"
#include "text/UnifiedDiff.h"
#include "work/Work.h"

namespace kdx {
namespace {

using kiv::KDXDocument;
constexpr const char* kAmbiguous =
    "a path is that of an object with a '/' in a name, too; kdx edit takes a path as a list of "
    "types and names";

using TextEdits = std::vector<kiv::KDXTextEdit>;

/// In a list of edits, which one it was.
std::string withLine(const Edit& edit, const std::string& text) {
    return edit.line == 0 ? text : "edit on line " + std::to_string(edit.line) + ": " + text;
}

/// The place is one in the file, also where edits before this one have moved it.
void reportRefused(Outcome& outcome, const Source& source, const Edit& edit, const std::string& why,
                   const Settings& settings) {
    outcome.raise(Status::trouble);
    const KDXDocument asRead(source.buffer);
    const KDXDocument::Node node = changedBy(asRead, edit);
    const Place place =
        node == KDXDocument::Node::none ? Place() : placeIn(source.buffer, asRead.placeOf(node));
    appendProblem(outcome.diagnostics, source.name,
                  {Severity::error, "refused-edit", place, withLine(edit, why)}, settings);
}

/// @return false when that is not so; the outcome then says why.
bool isMade(const Edit& edit, KDXDocument& document, const Source& source, Outcome& outcome,
            const Settings& settings) {
    try {
        applyEdits(document, {edit});
        return true;
    } catch (const NotThere& missing) {
        outcome.raise(Status::findings);
        appendTrouble(outcome.diagnostics, source.name, withLine(edit, missing.what()), settings);
    } catch (const Trouble& trouble) {
        reportRefused(outcome, source, edit, trouble.what(), settings);
    } catch (const kiv::Error& error) {
        reportRefused(outcome, source, edit, kiv::visibleText(error.message()), settings);
    }
    return false;
}

/// @return nothing when one of the edits cannot be made.
std::optional<TextEdits> editsIn(std::string_view text, const std::vector<Edit>& edits) {
    KDXDocument document{std::string(text)};
    try {
        applyEdits(document, edits);
        return document.textEdits();
    } catch (const Trouble&) {
        return std::nullopt;
    } catch (const kiv::Error&) {
        return std::nullopt;
    }
}

/// Makes the edits in the part of the text that they need. @return nothing when that is not known,
/// or when one of them cannot be made: a document of the whole text then tells why, and where.
std::optional<TextEdits> editsInPart(std::string_view text, const std::vector<Edit>& edits) {
    const std::optional<kiv::KDXSteps> path = commonPath(edits);
    if (!path) return std::nullopt;
    const std::string_view part = kiv::partFor(text, *path);
    if (findAmbiguous(part, edits) != nullptr) return std::nullopt;
    std::optional<TextEdits> changes = editsIn(part, edits);
    if (!changes) return std::nullopt;
    for (kiv::KDXTextEdit& change : *changes)
        change.offset += static_cast<std::size_t>(part.data() - text.data());
    return changes;
}

/// @return nothing when an edit cannot be made; the outcome then says why.
std::optional<TextEdits> editsInWhole(const Source& source, const std::vector<Edit>& edits,
                                      Outcome& outcome, const Settings& settings) {
    if (const Edit* edit = findAmbiguous(source.buffer, edits)) {
        reportRefused(outcome, source, *edit, kAmbiguous, settings);
        return std::nullopt;
    }
    std::optional<TextEdits> changes = editsIn(source.buffer, edits);
    if (changes) return changes;
    KDXDocument document(source.buffer);  // one edit after the other, to tell which it is
    for (const Edit& edit : edits)
        if (!isMade(edit, document, source, outcome, settings)) return std::nullopt;
    return document.textEdits();
}

/// What the text becomes, without a copy of it.
Pieces changed(std::string_view text, const TextEdits& changes) {
    Pieces pieces;
    std::size_t kept = 0;
    for (const kiv::KDXTextEdit& change : changes) {
        pieces.push_back(text.substr(kept, change.offset - kept));
        pieces.emplace_back(change.replacement);
        kept = change.offset + change.length;
    }
    pieces.push_back(text.substr(kept));
    return pieces;
}

Outcome changeFile(const std::string& file, const std::vector<Edit>& edits,
                   const ChangeOptions& options, const Settings& settings) {
    if (options.inPlace && file == kStandardInput)
        throw Trouble("cannot be changed in place: leave out -i, or name a file");
    Outcome outcome;
    const Source source = readSource(file);
    std::optional<TextEdits> changes = editsInPart(source.buffer, edits);
    if (!changes) changes = editsInWhole(source, edits, outcome, settings);
    if (!changes) return outcome;
    if (!options.inPlace && !options.diff) {
        outcome.results = kiv::applyEdits(source.buffer, *changes);
        return outcome;
    }
    if (changes->empty()) return outcome;
    if (options.inPlace) {
        replaceFile(file, source, changed(source.buffer, *changes));
        return outcome;
    }
    outcome.status = Status::findings;
    appendUnifiedDiff(outcome.results, source.name, source.buffer, *changes, settings.outputColor);
    return outcome;
}

}  // namespace

Status changeFiles(const std::vector<std::string>& files, const std::vector<Edit>& edits,
                   const ChangeOptions& options, const Settings& settings) {
    FileList list = listFiles(files, settings);
    if (options.inPlace) leaveOutRepeated(list.files);
    return workOnFiles(list, settings, [&](const std::string& file, std::size_t) {
        return changeFile(file, edits, options, settings);
    });
}

}  // namespace kdx
