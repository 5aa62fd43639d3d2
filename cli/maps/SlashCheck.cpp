#include "SlashCheck.h"

#include <kiv/KDXPath.h>

#include <string>

#include "PathReader.h"
#include "text/ShownText.h"

namespace kdx {
namespace {

constexpr const char* kRule = "ambiguous-path";

/// Whether the path is one that a longer name with a '/' could begin with.
bool endsInName(const std::string& pathText) {
    const kiv::KDXPath path(pathText);
    const std::size_t count = path.numComponent();
    return count > 0 && path.getName(count - 1) != path.getType(count - 1);
}

}  // namespace

void checkSlashes(std::string_view text, const kiv::StringMapMap& map, Findings& findings) {
    if (text.find('/') == std::string_view::npos) return;
    using Part = kiv::KDXReader::Part;
    PathReader paths(text);
    const kiv::KDXReader& reader = paths.statement();
    while (paths.next()) {
        const std::size_t slash = reader.second().find('/');
        const bool isObject = reader.kind() == kiv::MiniKDXParser::lineObject;
        if (!isObject || slash == std::string_view::npos || map.count(paths.path()) == 0) continue;
        findings.add({Severity::warning, kRule, placeIn(text, reader.placeOf(Part::second, slash)),
                      "the '/' in the name makes the path " + shown(paths.path()) +
                          " read as that of an object one level deeper"});
    }
}

void checkSlashes(const kiv::StringMapMap& map, Findings& findings) {
    for (const auto& object : map) {
        const std::string around = object.first.substr(0, object.first.rfind('/'));
        if (map.count(around) != 0 || !endsInName(around)) continue;
        findings.add({Severity::warning,
                      kRule,
                      {},
                      shown(object.first) + ": the map has no object " + shown(around) +
                          "; should the last '/' belong to a name, this is written as another "
                          "object"});
    }
}

}  // namespace kdx
