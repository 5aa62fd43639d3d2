#include "ChangeFiles.h"

#include <kiv/Error.h>
#include <kiv/KDXText.h>

#include <utility>
#include <variant>

#include "io/ReplaceFile.h"
#include "messages/Diagnostics.h"
#include "text/UnifiedDiff.h"
#include "work/Work.h"

namespace kdx {
namespace {

using kiv::KDXDocument;

/// In a list of edits, which one it was.
std::string withLine(const Edit& edit, const std::string& text) {
    return edit.line == 0 ? text : "edit on line " + std::to_string(edit.line) + ": " + text;
}

/// The place is one in the file, also where edits before this one have moved it.
void reportRefused(Outcome& outcome, const Source& source, const KDXDocument& document,
                   const Edit& edit, const std::string& why, const Settings& settings) {
    outcome.raise(Status::trouble);
    const std::string text = source.buffer.empty() ? document.text() : source.buffer;
    const KDXDocument asRead(text);
    const KDXDocument::Node node = changedBy(asRead, edit);
    const Place place =
        node == KDXDocument::Node::none ? Place() : placeIn(text, asRead.placeOf(node));
    appendProblem(outcome.diagnostics, source.name,
                  {Severity::error, "refused-edit", place, withLine(edit, why)}, settings);
}

/// @return false when that is not so; the outcome then says why.
bool isMade(const Edit& edit, KDXDocument& document, const Source& source, Outcome& outcome,
            const Settings& settings) {
    try {
        applyEdit(document, edit);
        return true;
    } catch (const NotThere& missing) {
        outcome.raise(Status::findings);
        appendTrouble(outcome.diagnostics, source.name, withLine(edit, missing.what()), settings);
    } catch (const Trouble& trouble) {
        reportRefused(outcome, source, document, edit, trouble.what(), settings);
    } catch (const kiv::Error& error) {
        reportRefused(outcome, source, document, edit, kiv::visibleText(error.message()), settings);
    }
    return false;
}

/// A lone set that is refused has changed nothing, so that its document still has the text as it
/// was read: no copy is needed of what may be large.
bool isLoneSet(const std::vector<Edit>& edits) {
    return edits.size() == 1 && std::holds_alternative<SetEdit>(edits.front().change);
}

Outcome changeFile(const std::string& file, const std::vector<Edit>& edits,
                   const ChangeOptions& options, const Settings& settings) {
    if (options.inPlace && file == kStandardInput)
        throw Trouble("cannot be changed in place: leave out -i, or name a file");
    Outcome outcome;
    Source source = readSource(file);
    const bool isPrinted = !options.inPlace && !options.diff;
    KDXDocument document(isPrinted && isLoneSet(edits) ? std::exchange(source.buffer, {})
                                                       : source.buffer);
    for (const Edit& edit : edits)
        if (!isMade(edit, document, source, outcome, settings)) return outcome;

    if (isPrinted) {
        outcome.results = std::move(document).text();
        return outcome;
    }
    const std::vector<kiv::KDXTextEdit> changes = document.textEdits();
    if (changes.empty()) return outcome;
    if (options.inPlace) {
        replaceFile(file, source, std::move(document).text());
        return outcome;
    }
    outcome.status = Status::findings;
    appendUnifiedDiff(outcome.results, source.name, source.buffer, changes, settings.outputColor);
    return outcome;
}

}  // namespace

Status changeFiles(const std::vector<std::string>& files, const std::vector<Edit>& edits,
                   const ChangeOptions& options, const Settings& settings) {
    return workOnArguments(files, settings, [&](const std::string& file, std::size_t) {
        return changeFile(file, edits, options, settings);
    });
}

}  // namespace kdx
