#include <kiv/Error.h>
#include <kiv/KDXBuilder.h>
#include <kiv/KDXPath.h>
#include <kiv/Messages.h>
#include <kiv/StringUtilities.h>

#include <algorithm>
#include <utility>

#include "NumberText.h"
#include "base/ObjectName.h"

namespace kiv {
namespace {

constexpr const char* kActionInObject =
    "Cannot add an action unless at root level. Current level = %1";
constexpr const char* kEmptyAction = "Internal error - empty action name.";
constexpr const char* kObjectsOpen =
    "Internal error in specifying object nesting. Objects remain open.";
constexpr const char* kNothingOpen = "Internal error in specifying object nesting.";

const std::string replaceMark(detail::kReplaceMark);

[[noreturn]] void fail(const char* function, const SystemMsg& message) {
    throw internal::error("KDXBuilder", function, message, errorTypeFailure);
}

/// What follows a number: a blank and the unit in brackets, or nothing.
std::string unitText(const std::string& unit) {
    std::string text = StringUtilities::removeWhitespace(unit);
    if (text.empty()) return text;
    if (text.front() != '[') text.insert(0, 1, '[');
    if (text.back() != ']') text += ']';
    return " " + text;
}

void appendJoined(std::string& text, const std::vector<std::string>& pieces,
                  const char* separator) {
    const char* before = "";
    for (const std::string& piece : pieces) {
        text.append(before).append(piece);
        before = separator;
    }
}

void requireRootLevel(std::int32_t level) {
    if (level != 0) fail("addAction", SystemMsg(kActionInObject).arg(level));
}

// An argument may be the text itself, which getKDX() hands out and which grows while the line is
// written. So its length is taken first, and no more than that is appended of it.

void addActionCommon(std::string& text, std::int32_t level, const std::string& action) {
    requireRootLevel(level);
    const std::string name = StringUtilities::removeWhitespace(action);
    if (name.empty()) fail("addActionCommon", SystemMsg(kEmptyAction));
    if (name.front() != '>') text += '>';
    text.append(name).append(" ");
}

void addParamCommon(std::string& text, const std::string& indent, const std::string& name) {
    const std::size_t nameLength = name.size();
    text.append(indent).append(name, 0, nameLength).append(" = ");
}

}  // namespace

KDXBuilder::KDXBuilder() : indentStep("  ") {}
KDXBuilder::KDXBuilder(const std::string& rootPath) : KDXBuilder() {
    pushRoot(rootPath);
}
KDXBuilder::KDXBuilder(const KDXBuilder&) = default;
KDXBuilder::~KDXBuilder() = default;

KDXBuilder::KDXBuilder(KDXBuilder&& other) noexcept
    : level(other.level),
      indentStep(std::exchange(other.indentStep, {})),
      indent(std::exchange(other.indent, {})),
      text(std::exchange(other.text, {})) {}

KDXBuilder& KDXBuilder::operator=(const KDXBuilder& other) {
    return *this = KDXBuilder(other);  // an allocation that fails leaves the builder unchanged
}

KDXBuilder& KDXBuilder::operator=(KDXBuilder&& other) noexcept {
    level = other.level;
    indentStep = std::exchange(other.indentStep, {});
    indent = std::exchange(other.indent, {});
    text = std::exchange(other.text, {});
    return *this;
}

/// Makes a change of several steps, or none of it when one of them throws.
template <typename Change>
void KDXBuilder::changeWholly(Change change) {
    const std::int32_t levelBefore = level;
    const std::size_t indentBefore = indent.size();
    const std::size_t lengthBefore = text.size();
    try {
        change();
    } catch (...) {
        level = levelBefore;
        indent.resize(indentBefore, ' ');
        text.resize(lengthBefore);
        throw;
    }
}

void KDXBuilder::pushObject(const std::string& type, const std::string& name) {
    const std::size_t typeLength = type.size();
    const std::size_t nameLength = name.size();
    changeWholly([&] {
        text.append(indent).append(type, 0, typeLength).append(": ");
        text.append(name, 0, nameLength).append("\n");
        indent += indentStep;
        ++level;
    });
}

void KDXBuilder::pushObject(const std::string& type) {
    const std::size_t typeLength = type.size();
    changeWholly([&] {
        text.append(indent).append(type, 0, typeLength).append(":\n");
        indent += indentStep;
        ++level;
    });
}

void KDXBuilder::pushReplacedObject(const std::string& type, const std::string& name) {
    pushObject(replaceMark + type, name);
}

void KDXBuilder::pushReplacedObject(const std::string& type) {
    pushObject(replaceMark + type);
}

void KDXBuilder::pushRoot(const std::string& path) {
    const KDXPath root(path);
    changeWholly([&] {
        for (std::size_t i = 0; i < root.numComponent(); ++i) {
            const std::string& type = root.getType(i);
            const std::string& name = root.getName(i);
            const bool isNamed = !detail::writtenName(type, name).empty();
            isNamed ? pushObject(type, name) : pushObject(type);
        }
    });
}

void KDXBuilder::popObject() {
    if (level < 1) fail("popObject", SystemMsg(kNothingOpen));
    changeWholly([&] {
        indent.resize(indent.size() - std::min<std::size_t>(indent.size(), 2));
        --level;
        text.append(indent).append("END\n");
    });
}

void KDXBuilder::popAll() {
    changeWholly([&] {
        while (level >= 1) popObject();
    });
}

void KDXBuilder::addParam(const std::string& name, const std::string& value) {
    const std::size_t valueLength = value.size();
    changeWholly([&] {
        addParamCommon(text, indent, name);
        text.append(value, 0, valueLength).append("\n");
    });
}

void KDXBuilder::addParam(const std::string& name, const std::vector<std::string>& values) {
    changeWholly([&] {
        addParamCommon(text, indent, name);
        appendJoined(text, values, ", ");
        text += '\n';
    });
}

void KDXBuilder::addParam(const std::string& name, int value) {
    addParam(name, std::to_string(value));
}

void KDXBuilder::addParam(const std::string& name, double value) {
    addParam(name, detail::numberText(value));
}

void KDXBuilder::addParam(const std::string& name, double value, const std::string& unit) {
    addParam(name, detail::numberText(value) + unitText(unit));
}

void KDXBuilder::addAction(const std::string& action) {
    addAction(action, std::string());
}

void KDXBuilder::addAction(const std::string& action, const std::string& params) {
    const std::size_t paramsLength = params.size();
    changeWholly([&] {
        addActionCommon(text, level, action);
        text.append(params, 0, paramsLength).append("\n");
    });
}

void KDXBuilder::addAction(const std::string& action, const std::vector<std::string>& params) {
    changeWholly([&] {
        addActionCommon(text, level, action);
        appendJoined(text, params, ",");
        text += '\n';
    });
}

void KDXBuilder::addAction(const ActionBuilder& action) {
    requireRootLevel(level);
    text += action.getKDX() + "\n";
}

const std::string& KDXBuilder::getKDX() const {
    if (level != 0) fail("getKDX", SystemMsg(kObjectsOpen));
    return text;
}

}  // namespace kiv
