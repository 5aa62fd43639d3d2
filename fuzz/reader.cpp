// A text, statement by statement: nothing of it is lost, each byte is where it came from, and what
// is reported is what the parser reports.

#include <kiv/KDXReader.h>

#include "Support.h"

namespace {

using kiv::KDXReader;
using Part = KDXReader::Part;

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

/// Line and column of an offset, counted byte by byte.
void requirePlace(const kiv::KDXPlace& place, std::string_view text) {
    std::size_t line = 1;
    std::size_t column = 1;
    const bool marked = text.substr(0, 3) == kByteOrderMark;
    for (std::size_t i = marked ? 3 : 0; i < place.offset; ++i) {
        column = text[i] == '\n' ? 1 : column + 1;
        line += text[i] == '\n' ? 1 : 0;
    }
    fuzz::require(place.line == line && place.column == column, "line and column fit the offset");
}

bool isBlank(char c) {
    return c == ' ' || (c >= '\t' && c <= '\r');
}

void requirePart(const KDXReader& reader, Part part, std::string_view bytes,
                 std::string_view text) {
    const std::size_t begin = text.size() == 0 ? 0 : reader.placeInSource(0).offset;
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        const kiv::KDXPlace place = reader.placeOf(part, i);
        fuzz::require(
            text[place.offset] == bytes[i] || (bytes[i] == ' ' && isBlank(text[place.offset])),
            "a byte stands where it is said to");
    }
    const kiv::KDXPlace end = reader.placeOf(part, bytes.size());
    fuzz::require(end.offset >= begin && end.offset <= begin + reader.source().size(),
                  "a part ends in its statement");
    requirePlace(end, text);
}

void requireParts(const KDXReader& reader, std::string_view text) {
    requirePart(reader, Part::line, reader.line(), text);
    requirePart(reader, Part::text, reader.text(), text);
    requirePart(reader, Part::first, reader.first(), text);
    requirePart(reader, Part::second, reader.second(), text);
    requirePart(reader, Part::comment, reader.comment(), text);
    requirePlace(reader.place(), text);
}

/// What the parser reports of a statement; nothing for one that it passes over.
void addEvent(std::vector<fuzz::Events::Event>& events, const KDXReader& reader,
              std::size_t lastLine) {
    const std::string first(reader.first());
    const std::string second(reader.second());
    switch (reader.kind()) {
        case kiv::MiniKDXParser::lineObject:
            return events.push_back({'o', first, second, lastLine});
        case kiv::MiniKDXParser::lineParameter:
            return events.push_back({'p', first, second, lastLine});
        case kiv::MiniKDXParser::lineEnd: return events.push_back({'e', "", "", lastLine});
        case kiv::MiniKDXParser::lineAction:
            return events.push_back(
                {'a', fuzz::withoutLeadingBlanks(std::string(reader.line())), "", lastLine});
        case kiv::MiniKDXParser::lineUnrecognised:
        case kiv::MiniKDXParser::lineVerbatim:
        case kiv::MiniKDXParser::lineBlank: return;
    }
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    // On the heap and of exactly this size, so that a look behind it is noticed.
    const std::vector<char> bytes(data, data + size);
    const std::string_view text(bytes.data(), bytes.size());
    KDXReader reader(text);
    const std::size_t begin = reader.hasByteOrderMark() ? kByteOrderMark.size() : 0;
    fuzz::Events parser(fuzz::Input(text.substr(begin)).lines());
    const bool complete = parser.read();

    std::vector<fuzz::Events::Event> events;
    std::size_t offset = begin;
    bool unrecognised = false;
    while (reader.next()) {
        fuzz::require(reader.source().data() == text.data() + offset && !reader.source().empty(),
                      "statements follow one another");
        offset += reader.source().size();
        requireParts(reader, text);
        unrecognised = unrecognised || reader.kind() == kiv::MiniKDXParser::lineUnrecognised;
        const std::size_t lastByte = reader.source().size() - 1;
        if (!unrecognised) addEvent(events, reader, reader.placeInSource(lastByte).line - 1);
    }
    fuzz::require(offset == text.size() && reader.source().empty(), "the statements are the text");
    requirePlace(reader.place(), text);
    fuzz::require(complete != unrecognised && events == parser.list, "the parser reports the same");
    return 0;
}
