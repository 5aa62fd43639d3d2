#include <kiv/MiniKDXParser.h>

#include "parser/PhysicalLines.h"
#include "parser/Walk.h"

namespace kiv {
namespace {

/// The same as `result.assign(text)`, in half the instructions: assign() allows for a text that
/// lies in `result`.
const std::string& assigned(std::string& result, std::string_view text) {
    result.clear();
    return result.append(text);
}

}  // namespace

/// Calls the callbacks and keeps the stack of open objects. Each walk has its own texts for the
/// callbacks, which serve line after line, so that a callback may start another walk.
class MiniKDXParser::Reporter {
public:
    explicit Reporter(MiniKDXParser& reportingParser) : parser(reportingParser) {}

    void newObject(std::string_view type, std::string_view name) {
        parser.newObject(assigned(first, type), assigned(second, name));
        parser.objectStack.emplace_back(first, second);
    }
    void newParameter(std::string_view name, std::string_view value) {
        parser.newParameter(assigned(first, name), assigned(second, value));
    }
    void endObject() {
        parser.endObject();
        if (!parser.objectStack.empty()) parser.objectStack.pop_back();
    }
    void newAction(std::string_view line) { parser.newAction(assigned(first, line)); }

private:
    MiniKDXParser& parser;
    std::string first;
    std::string second;
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
