#pragma once

#include <kiv/CleanKDXParamString.h>
#include <kiv/Error.h>
#include <kiv/ExtractActionOrStateFromKDX.h>
#include <kiv/KDXBuilder.h>
#include <kiv/KDXFormatting.h>
#include <kiv/KDXPath.h>
#include <kiv/KDXToStringMapMap.h>
#include <kiv/Messages.h>
#include <kiv/ObjectKDXParser.h>
#include <kiv/StringMapMapToKDX.h>
#include <kiv/StringUtilities.h>

#include <string>
#include <vector>

#include "support/EventRecorder.h"
#include "support/Text.h"

/// Every part of the library, on texts so long that no string can do without an allocation.
namespace everyOperation {

inline const std::string kDocument =
    "> an action line that is longer than a small string \\\n   and continued # with a comment\n"
    "A long type of an object: and a long name for the same object\n"
    "  a long name of a parameter = a value that is   long as well \\\n    \\\n    and goes on\n"
    "  Z nested object that is not in order: with a name of its own\n    x = 1\n  END\n"
    "END # A long type of an object\nA long type of an object: left open at the end\n";
inline const std::vector<std::string> kLines = linesOf(kDocument);
inline const std::vector<std::string> kBroken = linesOf(kDocument + "a line that is no KDX at all");
inline const std::string kPath = "/A long type of an object:and a long name/Z nested object:b/c";

inline std::string walk() {
    const EventRecorder recorder(kBroken);
    EventRecorder copy;
    copy = recorder;
    const std::string message = messageOf([&] { copy.parse(); });
    return copy.events + message;
}

inline std::string search() {
    kiv::ObjectKDXParser parser(kLines);
    parser.parseForObject("and a long name for the same object", -1);
    parser.parseForObjectsByType("Z nested object that is not in order", 0,
                                 "A long type of an object");
    kiv::ObjectKDXParser copy(kLines);
    copy = parser;
    std::string found = kiv::StringUtilities::vectorToOneLineString(copy.getResults());
    for (const auto& [key, lines] : copy.getTypeResults()) found += key + lines.front();
    return found;
}

inline std::string readAndWrite() {
    kiv::StringMapMap map;
    kiv::KDXToStringMapMap::convert(kDocument, map, {"A long type of an object"}, false);
    const kiv::KDXToStringMapMap lines(kLines, map);
    const kiv::KDXToStringMapMap copy(lines);
    std::string text;
    kiv::StringMapMapToKDX::convert(map.begin()->first, map, text);
    return text;
}

inline std::string build() {
    kiv::KDXBuilder builder(kPath);
    builder.addParam(kPath, 1234.5, kPath);
    kiv::CleanKDXParamString value(kPath);
    builder.addParam(kPath, value = kiv::CleanKDXParamString(kPath + "\\\\"));
    builder.addParam("refused", failureOf<kiv::internal::error>([&] { builder.addAction(kPath); }));
    builder.popAll();
    return builder.getKDX();
}

inline std::string extract() {
    std::string text;
    for (const auto& [kind, run] :
         kiv::ExtractActionOrStateFromKDX::extractActionOrStateFromKDX(kDocument))
        text += run;
    return text;
}

inline std::string strings() {
    const kiv::KDXPath path(kPath);
    return joined(kiv::KDXFormatting::indentKDX(kLines)) +
           kiv::KDXFormatting::removeComment(kLines[1]) +
           kiv::StringUtilities::replaceSubstring(kPath, "o", kPath) +
           kiv::StringUtilities::simplifyWhitespace(kDocument) + path.getSubPath(1, 2) +
           std::to_string(path < kiv::KDXPath("/A")) +
           std::string(kiv::UserMsg("%1 " + kPath, nullptr).arg(kPath)) +
           std::string(kiv::SystemMsg(kPath + "%1").arg(-1234567));
}

inline const std::vector<std::string (*)()> kOperations = {walk,  search,  readAndWrite,
                                                           build, extract, strings};

}  // namespace everyOperation
