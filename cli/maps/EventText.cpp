#include "EventText.h"

#include <kiv/KDXReader.h>
#include <kiv/KDXText.h>

#include <nlohmann/json.hpp>

#include "base/Status.h"
#include "io/Output.h"
#include "text/JsonText.h"
#include "text/ShownText.h"

namespace kdx {
namespace {

using Json = nlohmann::json;
using kiv::KDXReader;
using kiv::MiniKDXParser;

constexpr const char* kSource = "source";
constexpr const char* kSourceHex = "sourceHex";
constexpr std::string_view kHexDigits = "0123456789abcdef";

/// What the kinds of statements are called, and their halves, where they have any.
struct KindNames {
    const char* kind;
    const char* first;
    const char* second;
};

KindNames namesOf(const KDXReader& reader) {
    switch (reader.kind()) {
        case MiniKDXParser::lineBlank:
            return {reader.comment().empty() ? "blank" : "comment", nullptr, nullptr};
        case MiniKDXParser::lineObject: return {"object", "type", "name"};
        case MiniKDXParser::lineParameter: return {"parameter", "name", "value"};
        case MiniKDXParser::lineEnd: return {"end", nullptr, nullptr};
        case MiniKDXParser::lineAction: return {"action", "text", nullptr};
        case MiniKDXParser::lineVerbatim: return {"verbatim", "text", nullptr};
        case MiniKDXParser::lineUnrecognised: return {"unrecognised", "text", nullptr};
    }
    return {};
}

std::string hexOf(std::string_view bytes) {
    std::string text;
    for (const char c : bytes) {
        const auto byte = static_cast<unsigned char>(c);
        text += kHexDigits[byte >> 4U];
        text += kHexDigits[byte & 15U];
    }
    return text;
}

/// Appends `,"NAME":"TEXT"`.
void appendMember(std::string& out, const char* name, std::string_view text) {
    out.append(",\"").append(name).append("\":");
    appendShownJsonString(out, text);
}

void appendNumber(std::string& out, const char* name, std::size_t number) {
    out.append(",\"").append(name).append("\":").append(std::to_string(number));
}

void appendSource(std::string& out, std::string_view bytes) {
    const bool isUtf8 = kiv::findNoUtf8(bytes) == std::string_view::npos;
    isUtf8 ? appendMember(out, kSource, bytes) : appendMember(out, kSourceHex, hexOf(bytes));
    out += "}\n";
}

void appendEvent(std::string& out, const KDXReader& reader) {
    const KindNames names = namesOf(reader);
    const kiv::KDXPlace place = reader.place();
    out.append("{\"kind\":\"").append(names.kind).append(1, '"');
    appendNumber(out, "line", place.line);
    appendNumber(out, "column", place.column);
    appendNumber(out, "depth", reader.depth());
    if (names.first != nullptr)
        appendMember(out, names.first, names.second != nullptr ? reader.first() : reader.text());
    if (names.second != nullptr) appendMember(out, names.second, reader.second());
    if (!reader.comment().empty()) appendMember(out, "comment", reader.comment());
    appendSource(out, reader.source());
}

/// The bytes that hexadecimal digits stand for; nothing is added where they are none.
bool appendHex(std::string& out, const std::string& digits) {
    if (digits.size() % 2 != 0 || digits.find_first_not_of(kHexDigits) != std::string::npos)
        return false;
    for (std::size_t i = 0; i < digits.size(); i += 2)
        out += static_cast<char>(kHexDigits.find(digits[i]) * 16 + kHexDigits.find(digits[i + 1]));
    return true;
}

/// Appends the bytes of a statement. @return whether the event has them.
bool appendStatement(std::string& out, const Json& event) {
    if (!event.is_object()) return false;
    const auto source = event.find(kSource);
    if (source != event.end() && source->is_string()) {
        out += source->get_ref<const std::string&>();
        return true;
    }
    const auto digits = event.find(kSourceHex);
    return digits != event.end() && digits->is_string() &&
           appendHex(out, digits->get_ref<const std::string&>());
}

}  // namespace

void printEvents(const Source& source) {
    Printer printer;
    if (source.hasByteOrderMark) {
        printer.text += "{\"kind\":\"byte-order-mark\"";
        appendSource(printer.text, source.byteOrderMark());
    }
    // With its mark, as the reader would take a second one for it.
    for (KDXReader reader(source.buffer); reader.next(); printer.printIfLong())
        appendEvent(printer.text, reader);
    printer.print();
}

std::string readEvents(std::string_view lines) {
    std::string text;
    for (std::size_t number = 1; !lines.empty(); ++number) {
        const std::string_view line = lines.substr(0, lines.find('\n'));
        lines.remove_prefix(std::min(line.size() + 1, lines.size()));
        if (line.find_first_not_of(" \t\r") == std::string_view::npos) continue;
        const Json event = Json::parse(line, nullptr, false);
        if (appendStatement(text, event)) continue;
        throw Trouble("line " + std::to_string(number) + " is no event with a \"source\", as kdx " +
                      "events prints them: " + shown(line));
    }
    return text;
}

}  // namespace kdx
