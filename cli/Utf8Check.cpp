#include "Utf8Check.h"

#include <kiv/MiniKDXParser.h>

#include <string>
#include <vector>

#include "LogicalLines.h"

// A character begins with a byte below 0x80, which is all of it, or from 0xC2 to 0xF4, which is
// followed by one to three bytes from 0x80 to 0xBF. Behind 0xE0, 0xED, 0xF0 and 0xF4 the first of
// those is limited further: to the shortest form, to what is no surrogate, to U+10FFFF.

namespace kdx {
namespace {

using kiv::MiniKDXParser;

using Byte = unsigned char;

bool isBetween(Byte low, Byte byte, Byte high) {
    return low <= byte && byte <= high;
}

bool followsLead(Byte lead, Byte byte) {
    const Byte low = lead == 0xE0 ? 0xA0 : lead == 0xF0 ? 0x90 : 0x80;
    const Byte high = lead == 0xED ? 0x9F : lead == 0xF4 ? 0x8F : 0xBF;
    return isBetween(low, byte, high);
}

/// The length of the character at the front of a text that is not empty; 0 when there is none.
std::size_t characterLength(std::string_view text) {
    const Byte lead = static_cast<Byte>(text.front());
    if (lead < 0x80) return 1;
    if (!isBetween(0xC2, lead, 0xF4)) return 0;
    const std::size_t length = lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
    if (text.size() < length || !followsLead(lead, static_cast<Byte>(text[1]))) return 0;
    for (std::size_t i = 2; i < length; ++i)
        if (!isBetween(0x80, static_cast<Byte>(text[i]), 0xBF)) return 0;
    return length;
}

/// The offset of the first byte that belongs to no UTF-8 character; npos when there is none.
std::size_t findNoUtf8(std::string_view text) {
    for (std::size_t offset = 0; offset < text.size();) {
        const std::size_t length = characterLength(text.substr(offset));
        if (length == 0) return offset;
        offset += length;
    }
    return std::string_view::npos;
}

bool isUtf8(std::string_view text) {
    return findNoUtf8(text) == std::string_view::npos;
}

/// Walks a text along the paths of its objects.
class Utf8Checker {
public:
    Utf8Checker(std::string_view text, const kiv::StringMapMap& givenMap, Findings& filledFindings)
        : map(givenMap), findings(filledFindings), lines(text) {}

    void run() {
        while (lines.next()) {
            const MiniKDXParser::lineType type = lines.classify(first, second);
            if (type == MiniKDXParser::lineEnd) paths.pop_back();
            if (type == MiniKDXParser::lineObject) checkObject();
            if (type == MiniKDXParser::lineParameter) checkParameter();
        }
    }

private:
    void checkObject() {
        std::string path = paths.back() + '/' + first;
        if (!second.empty() && second != first) path.append(1, ':').append(second);
        paths.push_back(std::move(path));
        if (!isUtf8(second) && map.count(paths.back()) != 0) fail(shown(paths.back()));
    }

    void checkParameter() {
        if (isUtf8(second)) return;
        const auto object = map.find(paths.back());
        if (object == map.end()) return;
        const auto parameter = object->second.find(first);
        if (parameter != object->second.end() && parameter->second == second)
            fail(shown(paths.back()) + ", " + shown(first));
    }

    void fail(const std::string& where) {
        const std::size_t offset = findNoUtf8(lines.text());
        findings.add({Severity::error, "no-utf8", lines.placeOf(offset),
                      where + ": " + describedByte(lines.text()[offset]) +
                          " is no UTF-8, as JSON must be; convert the file first, as with iconv -f "
                          "LATIN1 -t UTF-8"});
    }

    const kiv::StringMapMap& map;
    Findings& findings;
    LogicalLines lines;
    std::string first;
    std::string second;
    std::vector<std::string> paths{""};  // of the open objects
};

}  // namespace

void checkUtf8(std::string_view text, const kiv::StringMapMap& map, Findings& findings) {
    if (!isUtf8(text)) Utf8Checker(text, map, findings).run();
}

}  // namespace kdx
