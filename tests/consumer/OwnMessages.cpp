// The message classes of a program that has its own, with another way to fill their tokens.
#include <kiv/Messages.h>

#include "OwnMessages.h"

namespace {

int calls = 0;

/// Fills the first place of a token alone, and says nothing where there is none.
void fill(kiv::MessageTemplate& message, const std::string& argument) {
    const std::string token = '%' + std::to_string(++message.count);
    const std::size_t at = message.text.find(token);
    if (at != std::string::npos) message.text.replace(at, token.size(), argument);
}

}  // namespace

int callsOfOwnArg() {
    return calls;
}

namespace kiv {

SystemMsg::SystemMsg(const std::string& text) : onlyText{0, text} {}
SystemMsg& SystemMsg::arg(std::int32_t argument) {
    ++calls;
    fill(onlyText, std::to_string(argument));
    return *this;
}
SystemMsg::operator std::string() const {
    return onlyText.text;
}

UserMsg::UserMsg(const std::string& text, bool* /*flag*/)
    : shownText{0, text}, loggedText{0, text} {}
UserMsg& UserMsg::arg(std::string argument) {
    ++calls;
    fill(shownText, argument);
    fill(loggedText, argument);
    return *this;
}
UserMsg::operator std::string() const {
    return loggedText.text;
}

}  // namespace kiv
