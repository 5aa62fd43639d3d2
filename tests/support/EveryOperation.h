#pragma once

#include <utility>

#include "support/EventRecorder.h"
#include "support/Library.h"
#include "support/Text.h"

/// All that a parser has found: "line|line[key]line|line[key]line".
inline std::string foundBy(kiv::ObjectKDXParser& parser) {
    std::string text = joined(parser.getResults());
    for (const auto& [key, result] : parser.getTypeResults())
        text += "[" + key + "]" + joined(result);
    return text;
}

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
    EventRecorder copy(recorder);
    copy.setCommands(kLines);
    copy = recorder;
    const std::string message = messageOf([&] { copy.parse(); });
    std::string first;
    std::string second;
    const auto kind = EventRecorder::determineLineType(kLines[3], first, second);
    return copy.events + message + first + second +
           std::to_string(kind == EventRecorder::determineLineType(kLines[3]));
}

inline std::string readStatements() {
    std::string text;
    kiv::KDXReader reader(kDocument);
    while (reader.next()) {
        text.append(reader.first()).append(reader.second()).append(reader.comment());
        text += std::to_string(reader.placeOf(kiv::KDXReader::Part::second).offset);
    }
    return text;
}

inline std::string check() {
    std::string text;
    for (const auto& problem : kiv::KDXCheck::check(kDocument + "END # A:\nEND\nend\n").problems)
        text += problem.message + (problem.fix ? problem.fix->edits.front().replacement : "");
    return text + std::to_string(kiv::KDXCheck::rules().size());
}

inline std::string edit() {
    kiv::KDXDocument document(kDocument);
    const kiv::KDXDocument copy(document);
    const auto object = document.nextSibling(document.firstChild(document.root()));
    document.setName(object, kPath);
    document.setValue(document.firstChild(object), kPath + '\\');
    document.setComment(document.firstChild(object), kPath);
    document.set(kiv::readPath("/A long type of an object:left open at the end/B:b"), "x", kPath);
    document.addText(kiv::KDXDocument::lastIn(object),
                     kDocument.substr(0, kDocument.find("END")) + "END\nEND\n");
    kiv::KDXDocument other(document);
    document.moveFrom(other, other.firstChild(object), kiv::KDXDocument::firstIn(object));
    document.removeParameters(kiv::readPath("/**"), "x");
    return kiv::applyEdits(copy.text(), document.textEdits()) + other.text();
}

inline std::string search() {
    kiv::ObjectKDXParser parser(kLines);
    parser.parseForObject("and a long name for the same object", -1);
    parser.parseForObjectsByType("Z nested object that is not in order", 0,
                                 "A long type of an object");
    kiv::ObjectKDXParser copy(parser);
    copy = kiv::ObjectKDXParser(kLines);
    copy = parser;
    kiv::ObjectKDXParser moved(std::move(copy));
    return foundBy(moved) + kiv::StringUtilities::vectorToOneLineString(kLines);
}

inline std::string readAndWrite() {
    kiv::StringMapMap map;
    kiv::KDXToStringMapMap::convert(kDocument, map, {"A long type of an object"}, false);
    kiv::KDXToStringMapMap::convert(kLines, map);
    const kiv::KDXToStringMapMap text(kDocument, map);
    const kiv::KDXToStringMapMap lines(kLines, map);
    const kiv::KDXToStringMapMap copy(lines);
    const kiv::KDXToStringMapMap::Except except(kPath);
    kiv::KDXToStringMapMap::Except message(except);
    message = except;
    std::string written = message.message();
    const std::string path = map.begin()->first;
    kiv::StringMapMapToKDX::convert(map, written);
    kiv::StringMapMapToKDX::convert(path, map, written);
    const kiv::StringMapMapToKDX unmarked(map, written);
    const kiv::StringMapMapToKDX marked(path, map, written);
    return written;
}

inline std::string build() {
    kiv::ActionBuilder action(kPath);
    action.addParam(kPath);
    const kiv::ActionBuilder sameAction(action);
    kiv::KDXBuilder builder;
    builder.addAction(sameAction);
    builder.pushRoot(kPath);
    builder.addParam(kPath, 1234.5);
    const kiv::CleanKDXParamString clean(kPath + "\\\\");
    kiv::CleanKDXParamString value(clean);
    builder.addParam(kPath, value = clean);
    builder.addParam("refused", failureOf<kiv::internal::error>([&] { builder.addAction(kPath); }));
    kiv::KDXBuilder copy(builder);
    copy.popAll();
    builder = kiv::KDXBuilder(kPath);
    builder.popAll();
    return copy.getKDX() + builder.getKDX();
}

inline std::string extract() {
    std::string text;
    for (const auto& [kind, run] :
         kiv::ExtractActionOrStateFromKDX::extractActionOrStateFromKDX(kDocument))
        text += run;
    return text;
}

inline std::string tidy() {
    kiv::KDXFormatting::Style style;
    style.endComments = kiv::KDXFormatting::Style::EndComments::added;
    return joined(kiv::KDXFormatting::indentKDX(kLines)) +
           kiv::KDXFormatting::formatKDX(kDocument, style) +
           messageOf([&] { kiv::KDXFormatting::formatKDX(kDocument + "-\\#", style); }) +
           kiv::KDXFormatting::removeComment(kLines[1]) +
           kiv::StringUtilities::replaceSubstring(kPath, "o", kPath) +
           kiv::StringUtilities::simplifyWhitespace(kDocument) +
           kiv::StringUtilities::removeWhitespace(kDocument) +
           joined(kiv::StringUtilities::stringToVector(kDocument, '\n'));
}

inline std::string copyPathsAndMessages() {
    const kiv::KDXPath path(kPath);
    kiv::KDXPath copy(path);
    copy = path;
    const kiv::data::invalid error(kPath, kPath, kPath, kiv::errorTypeFailure);
    kiv::data::invalid sameError(error);
    sameError = error;
    const kiv::UserMsg message("%1 " + kPath, nullptr);
    kiv::UserMsg sameMessage(message);
    sameMessage = message;
    return copy.getSubPath(1, 2) + std::to_string(copy < kiv::KDXPath("/A")) + sameError.message() +
           std::string(sameMessage.arg(kPath)) +
           std::string(kiv::SystemMsg(kPath + "%1").arg(-1234567));
}

inline const std::vector<std::string (*)()> kOperations = {
    walk,         readStatements, check,   edit, search,
    readAndWrite, build,          extract, tidy, copyPathsAndMessages};

}  // namespace everyOperation
