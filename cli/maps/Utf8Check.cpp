#include "Utf8Check.h"

#include "PathReader.h"
#include "text/ShownText.h"

#include <kiv/KDXText.h>

#include <string>

namespace kdx {
namespace {

using kiv::MiniKDXParser;

bool isUtf8(std::string_view text) {
    return kiv::findNoUtf8(text) == std::string_view::npos;
}

/// Walks a text along the paths of its objects.
class Utf8Checker {
public:
    Utf8Checker(std::string_view givenText, const kiv::StringMapMap& givenMap,
                Findings& filledFindings)
        : text(givenText), map(givenMap), findings(filledFindings), paths(text) {}

    void run() {
        while (paths.next()) {
            if (isUtf8(reader.second())) continue;
            if (reader.kind() == MiniKDXParser::lineObject) checkObject();
            if (reader.kind() == MiniKDXParser::lineParameter) checkParameter();
        }
    }

private:
    void checkObject() {
        if (map.count(paths.path()) != 0) fail(shown(paths.path()));
    }

    void checkParameter() {
        const auto object = map.find(paths.path());
        if (object == map.end()) return;
        const auto parameter = object->second.find(std::string(reader.first()));
        if (parameter != object->second.end() && parameter->second == reader.second())
            fail(shown(paths.path()) + ", " + shown(reader.first()));
    }

    void fail(const std::string& where) {
        using Part = kiv::KDXReader::Part;
        const std::size_t byte = kiv::findNoUtf8(reader.second());
        const Place place = placeIn(text, reader.placeOf(Part::second, byte));
        findings.add({Severity::error, "no-utf8", place,
                      where + ": " + describedByte(reader.second()[byte]) +
                          " is no UTF-8, as JSON must be; convert the file first, as with iconv -f "
                          "LATIN1 -t UTF-8"});
    }

    std::string_view text;
    const kiv::StringMapMap& map;
    Findings& findings;
    PathReader paths;
    const kiv::KDXReader& reader = paths.statement();
};

}  // namespace

void checkUtf8(std::string_view text, const kiv::StringMapMap& map, Findings& findings) {
    if (!isUtf8(text)) Utf8Checker(text, map, findings).run();
}

}  // namespace kdx
