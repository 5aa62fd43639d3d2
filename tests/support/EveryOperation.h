#pragma once

#include <kiv/ActionBuilder.h>
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

#include "support/EventRecorder.h"

namespace everyOperation {

inline std::string ofReaders(const std::vector<std::string>& lines) {
    EventRecorder recorder(lines);
    recorder.parse();
    kiv::ObjectKDXParser parser(lines);
    parser.parseForObject("s1", -1);
    std::string text =
        recorder.events + kiv::StringUtilities::vectorToOneLineString(parser.getResults());
    parser.parseForObjectsByType("Channel", 0, "Sample");
    for (const auto& [key, found] : parser.getTypeResults()) text += key + found.front();
    try {
        EventRecorder({"?"}).parse();
    } catch (const kiv::data::invalid& error) {
        text += error.message();
    }
    return text;
}

inline std::string ofWriters() {
    kiv::ActionBuilder action("go");
    action.addParam("fast,");
    kiv::KDXBuilder builder;
    builder.addAction(action);
    builder.pushRoot("/Sample:s1");
    builder.addParam("count", 1234567);
    builder.addParam("size", 1234.5, "mm");
    builder.addParam("text", kiv::CleanKDXParamString("a\\"));
    try {
        builder.addAction("go");
    } catch (const kiv::internal::error& error) {
        builder.addParam("refused", error.message());
    }
    builder.popAll();
    return builder.getKDX();
}

inline std::string ofTools(const std::string& text, const std::vector<std::string>& lines) {
    kiv::StringMapMap map;
    kiv::KDXToStringMapMap::convert(text, map, {"Sample"}, false);
    kiv::KDXToStringMapMap::convert(lines, map);
    std::string result;
    kiv::StringMapMapToKDX::convert("/Sample:s1", map, result);
    for (const std::string& line : kiv::KDXFormatting::indentKDX(lines))
        result += line + kiv::KDXFormatting::removeComment(line);
    for (const auto& [kind, run] :
         kiv::ExtractActionOrStateFromKDX::extractActionOrStateFromKDX(text))
        result += run;
    result += std::string(kiv::SystemMsg("%1").arg(1234567));
    return result + std::to_string(kiv::KDXPath("/a") < kiv::KDXPath("/b:1"));
}

/// Uses every part of the library.
/// @return all that it had to say.
inline std::string run() {
    const std::string text =
        "> go\nSample: s1\n  gain = 1 \\\n  000\n  Channel: A\n    x = 1 # note\n  END\nEND\n";
    const auto lines = kiv::StringUtilities::stringToVector(text, '\n');
    return ofReaders(lines) + ofWriters() + ofTools(text, lines);
}

}  // namespace everyOperation
