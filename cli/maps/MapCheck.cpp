#include "MapCheck.h"

#include <kiv/Error.h>
#include <kiv/KDXDocument.h>
#include <kiv/KDXPath.h>
#include <kiv/MiniKDXParser.h>

#include "messages/Diagnostics.h"
#include "text/ShownText.h"

namespace kdx {
namespace {

using kiv::KDXDocument;
using kiv::MiniKDXParser;

/// Whether a line reads back as what it was made of, and leaves the line behind it alone. The
/// reader has the last word.
bool readsBack(const std::string& line, MiniKDXParser::lineType type, const std::string& first,
               const std::string& second) {
    const std::string text = line + "\nbehind = 1\n";
    kiv::KDXReader reader(text);
    return reader.next() && reader.source().size() == line.size() + 1 && reader.kind() == type &&
           reader.first() == first && reader.second() == second;
}

/// What the library says against doing something; empty when it did.
template <typename Attempt>
std::string refusalOf(Attempt attempt) {
    try {
        attempt();
    } catch (const kiv::data::invalid& refusal) {
        return refusal.message();
    }
    return {};
}

/// Makes a value one that the text can carry.
/// @return why that cannot be done; empty when it could.
std::string protect(const std::string& name, std::string& value) {
    return refusalOf([&] { value = kiv::writtenValue(name, value); });
}

/// Why the text cannot carry an object with this path; empty when it can.
std::string reasonAgainst(const std::string& pathText) {
    const kiv::KDXPath path(pathText);
    for (std::size_t i = 0; i < path.numComponent(); ++i) {
        const std::string& type = path.getType(i);
        const std::string name = path.getName(i) == type ? std::string() : path.getName(i);
        if (readsBack(type + ": " + name, MiniKDXParser::lineObject, type, name)) continue;
        const std::string what = '\'' + shown(name.empty() ? type : type + ": " + name) + "': ";
        KDXDocument document;
        const auto where = KDXDocument::lastIn(document.root());
        const std::string refusal = refusalOf([&] { document.addObject(where, type, name); });
        return what +
               (refusal.empty() ? "the backslash at the end would continue the line" : refusal);
    }
    const std::string normal = path.getSubPath(0, path.numComponent());
    if (normal != pathText) return "this path would read back as \"" + shown(normal) + '"';
    return pathText.empty() ? "the empty path names no object" : std::string();
}

void add(Findings& findings, const std::string& where, const std::string& reason) {
    if (!reason.empty()) findings.add({Severity::error, "not-carried", {}, where + ": " + reason});
}

}  // namespace

void makeCarried(kiv::StringMapMap& map, Findings& findings) {
    for (auto& [path, parameters] : map) {
        add(findings, shownName(path), reasonAgainst(path));
        for (auto& [name, value] : parameters)
            add(findings, shownName(path) + ", " + shownName(name), protect(name, value));
    }
}

}  // namespace kdx
