// The message classes of a program that has its own, with another way to fill their tokens.
#include <kiv/Messages.h>

#include <iostream>
#include <vector>

#include "OwnMessages.h"

namespace {

int calls = 0;

/// The pieces of the text between the tokens.
std::vector<std::string> pieces(const std::string& text, const std::string& token) {
    std::vector<std::string> found;
    std::size_t begin = 0;
    for (std::size_t end = 0; end != std::string::npos; begin = end + token.size()) {
        end = text.find(token, begin);
        found.push_back(text.substr(begin, end - begin));
    }
    return found;
}

void fill(kiv::MessageTemplate& message, const std::string& argument) {
    const std::string token = '%' + std::to_string(++message.count);
    const std::vector<std::string> between = pieces(message.text, token);
    if (between.size() == 1)
        std::cerr << "Warning: token " << token << " was not used in the message: \"" << argument
                  << '"';
    message.text = between.front();
    for (std::size_t i = 1; i < between.size(); ++i) message.text += argument + between[i];
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
