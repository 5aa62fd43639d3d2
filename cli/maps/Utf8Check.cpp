#include "Utf8Check.h"
#include "text/ShownText.h"

#include <kiv/KDXReader.h>
#include <kiv/KDXText.h>

#include <string>
#include <vector>

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
        : text(givenText), map(givenMap), findings(filledFindings), reader(text) {}

    void run() {
        while (reader.next()) {
            const MiniKDXParser::lineType kind = reader.kind();
            if (kind == MiniKDXParser::lineEnd) paths.pop_back();
            if (kind == MiniKDXParser::lineObject) checkObject();
            if (kind == MiniKDXParser::lineParameter) checkParameter();
        }
    }

private:
    void checkObject() {
        std::string path = paths.back() + '/';
        path.append(reader.first());
        const std::string_view name = reader.second();
        if (!name.empty() && name != reader.first()) path.append(1, ':').append(name);
        paths.push_back(std::move(path));
        if (!isUtf8(name) && map.count(paths.back()) != 0) fail(shown(paths.back()));
    }

    void checkParameter() {
        if (isUtf8(reader.second())) return;
        const auto object = map.find(paths.back());
        if (object == map.end()) return;
        const auto parameter = object->second.find(std::string(reader.first()));
        if (parameter != object->second.end() && parameter->second == reader.second())
            fail(shown(paths.back()) + ", " + shown(reader.first()));
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
    kiv::KDXReader reader;
    std::vector<std::string> paths{""};  // of the open objects
};

}  // namespace

void checkUtf8(std::string_view text, const kiv::StringMapMap& map, Findings& findings) {
    if (!isUtf8(text)) Utf8Checker(text, map, findings).run();
}

}  // namespace kdx
