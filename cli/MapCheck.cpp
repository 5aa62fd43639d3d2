#include "MapCheck.h"

#include <kiv/KDXPath.h>
#include <kiv/MiniKDXParser.h>
#include <kiv/StringUtilities.h>

#include "Diagnostics.h"

namespace kdx {
namespace {

using kiv::MiniKDXParser;

/// Whether a line reads back as what it was made of. The parser has the last word.
bool readsBack(const std::string& line, MiniKDXParser::lineType type, const std::string& first,
               const std::string& second) {
    if (line.find('\n') != std::string::npos || line.back() == '\\') return false;
    std::string readFirst;
    std::string readSecond;
    return MiniKDXParser::determineLineType(line, readFirst, readSecond) == type &&
           readFirst == first && readSecond == second;
}

std::string reasonInText(const std::string& text, const std::string& what) {
    if (text.find('\n') != std::string::npos) return what + " holds a line feed";
    if (text.find('#') != std::string::npos) return what + " holds a '#', which begins a comment";
    if (!text.empty() && text.back() == '\\') return what + " ends in a backslash";
    if (kiv::StringUtilities::removeWhitespace(text) != text)
        return what + " begins or ends in a blank";
    return {};
}

std::string reasonInName(const std::string& name, const std::string& what) {
    std::string run;
    std::string rest;
    if (MiniKDXParser::determineLineType(name + '=', run, rest) != MiniKDXParser::lineParameter)
        return what + " holds a character other than letters, digits, blanks, '&', '.' and '_'";
    if (run != name) return what + " has blanks at its ends or several in a row";
    return {};
}

/// Why the text cannot carry a parameter; empty when it can.
std::string reasonAgainst(const std::string& name, const std::string& value) {
    if (readsBack(name + " = " + value, MiniKDXParser::lineParameter, name, value)) return {};
    std::string reason = reasonInName(name, "the name of the parameter");
    if (reason.empty()) reason = reasonInText(value, "the value");
    return reason.empty() ? "the parameter would read back otherwise" : reason;
}

/// Why the text cannot carry an object with this path; empty when it can.
std::string reasonAgainst(const std::string& pathText) {
    const kiv::KDXPath path(pathText);
    for (std::size_t i = 0; i < path.numComponent(); ++i) {
        const std::string& type = path.getType(i);
        const std::string name = path.getName(i) == type ? std::string() : path.getName(i);
        if (readsBack(type + ": " + name, MiniKDXParser::lineObject, type, name)) continue;
        std::string reason = reasonInName(type, "the type '" + shown(type) + "'");
        if (reason.empty()) reason = reasonInText(name, "the name '" + shown(name) + "'");
        if (!reason.empty()) return reason;
        return "the name '" + shown(name) + "' has a tab, or several blanks in a row, inside";
    }
    const std::string normal = path.getSubPath(0, path.numComponent());
    if (normal != pathText) return "this path would read back as \"" + shown(normal) + '"';
    return pathText.empty() ? "the empty path names no object" : std::string();
}

void add(Findings& findings, const std::string& where, const std::string& reason) {
    if (!reason.empty()) findings.add({Severity::error, "not-carried", {}, where + ": " + reason});
}

}  // namespace

void checkMap(const kiv::StringMapMap& map, Findings& findings) {
    for (const auto& [path, parameters] : map) {
        add(findings, shownName(path), reasonAgainst(path));
        for (const auto& [name, value] : parameters)
            add(findings, shownName(path) + ", " + shownName(name), reasonAgainst(name, value));
    }
}

}  // namespace kdx
