#include <kiv/MiniKDXParser.h>

#include <array>

#include "parser/PhysicalLines.h"
#include "parser/Walk.h"

namespace kiv {
namespace {

/// A text for a callback, in storage that serves again.
///
/// There is a string for each short length: what a text is copied into is long enough and no
/// longer, so that copying is all there is to do. That takes half the instructions of
/// std::string::assign(), which were a quarter of all.
class ReusedText {
public:
    /// @return the text, until the next call.
    const std::string& assign(std::string_view text) {
        if (text.size() < shortTexts.size()) return assignShort(shortTexts[text.size()], text);
        longText.clear();  // append() does without assign()'s care for a text that lies in longText
        return longText.append(text);
    }

private:
    static const std::string& assignShort(std::string& target, std::string_view text) {
        if (target.size() != text.size()) target.resize(text.size());  // never used before
        text.copy(target.data(), text.size());
        return target;
    }

    std::array<std::string, 16> shortTexts;
    std::string longText;
};

}  // namespace

/// Calls the callbacks and keeps the stack of open objects. Each walk has its own texts for the
/// callbacks, which serve line after line, so that a callback may start another walk.
class MiniKDXParser::Reporter {
public:
    explicit Reporter(MiniKDXParser& reportingParser) : parser(reportingParser) {}

    void newObject(std::string_view type, std::string_view name) {
        const std::string& typeText = first.assign(type);
        const std::string& nameText = second.assign(name);
        parser.newObject(typeText, nameText);
        parser.objectStack.emplace_back(typeText, nameText);
    }
    void newParameter(std::string_view name, std::string_view value) {
        parser.newParameter(first.assign(name), second.assign(value));
    }
    void endObject() {
        parser.endObject();
        if (!parser.objectStack.empty()) parser.objectStack.pop_back();
    }
    void newAction(std::string_view line) { parser.newAction(first.assign(line)); }

private:
    MiniKDXParser& parser;
    ReusedText first;
    ReusedText second;
};

MiniKDXParser::MiniKDXParser() = default;
MiniKDXParser::MiniKDXParser(const std::vector<std::string>& lines) : commands(lines) {}
MiniKDXParser::MiniKDXParser(const MiniKDXParser&) = default;
MiniKDXParser& MiniKDXParser::operator=(const MiniKDXParser&) = default;
MiniKDXParser::~MiniKDXParser() = default;

void MiniKDXParser::setCommands(const std::vector<std::string>& lines) {
    commands = lines;
}
std::vector<std::string>& MiniKDXParser::getCommands() {
    return commands;
}
const std::vector<std::string>& MiniKDXParser::getCommands() const {
    return commands;
}
std::size_t MiniKDXParser::getLineNumber() const {
    return lineNumber;
}

void MiniKDXParser::newObject(const std::string& /*type*/, const std::string& /*name*/) {}
void MiniKDXParser::newParameter(const std::string& /*name*/, const std::string& /*value*/) {}
void MiniKDXParser::endObject() {}
void MiniKDXParser::newAction(const std::string& /*action*/) {}

void MiniKDXParser::parse() {
    objectStack.clear();
    Reporter reporter(*this);
    detail::walk(detail::ListedLines(commands), reporter, lineNumber);
}

}  // namespace kiv
