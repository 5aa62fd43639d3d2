#include <kiv/ActionBuilder.h>
#include <kiv/Error.h>
#include <kiv/StringUtilities.h>

#include <utility>

// An action line is
//
//     '>' ACTION ' ' PARAMETER ", " PARAMETER ...
//
// where PARAMETER is NAME '=' VALUE or VALUE alone, and every comma of a VALUE is "\,".

namespace kiv {
namespace {

constexpr const char* kEmptyName = "Parameter name must not be empty.";

void addParamImpl(std::string& text, bool& firstParam, const std::string& name,
                  const std::string& value) {
    std::string parameter = firstParam ? " " : ", ";
    if (!name.empty()) parameter.append(name).append("=");
    parameter += StringUtilities::replaceSubstring(value, ",", "\\,");
    text += parameter;
    firstParam = false;
}

}  // namespace

ActionBuilder::ActionBuilder(const std::string& action) : text(">" + action) {}
ActionBuilder::ActionBuilder(const ActionBuilder&) = default;
ActionBuilder& ActionBuilder::operator=(const ActionBuilder&) = default;
ActionBuilder::~ActionBuilder() = default;

ActionBuilder::ActionBuilder(ActionBuilder&& other) noexcept
    : text(std::exchange(other.text, {})), firstParam(other.firstParam) {}

ActionBuilder& ActionBuilder::operator=(ActionBuilder&& other) noexcept {
    text = std::exchange(other.text, {});
    firstParam = other.firstParam;
    return *this;
}

void ActionBuilder::addParam(const std::string& name, const std::string& value) {
    if (name.empty())
        throw internal::error("ActionBuilder", "addParam", kEmptyName, errorTypeFailure);
    addParamImpl(text, firstParam, name, value);
}

void ActionBuilder::addParam(const std::string& value) {
    addParamImpl(text, firstParam, "", value);
}

std::string ActionBuilder::getKDX() const {
    return text;
}

}  // namespace kiv
