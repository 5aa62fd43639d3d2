#include <kiv/Messages.h>

#include <iostream>

// A message template is text with the tokens "%1" to "%99". A token of one digit that a further
// digit follows is a token of two digits.

namespace kiv {
namespace {

bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

/// The position of the token in the text, from `begin` on; npos when it does not occur.
std::size_t findToken(const std::string& text, const std::string& token, std::size_t begin) {
    const bool oneDigit = token.size() == 2;
    for (std::size_t found = text.find(token, begin); found != std::string::npos;
         found = text.find(token, found + 1)) {
        const std::size_t behind = found + token.size();
        if (!oneDigit || behind == text.size() || !isDigit(text[behind])) return found;
    }
    return std::string::npos;
}

void fillNextToken(MessageTemplate& message, const std::string& argument) {
    ++message.count;
    const std::string token = "%" + std::to_string(message.count);
    std::string filled;
    std::size_t begin = 0;
    for (std::size_t found = findToken(message.text, token, 0); found != std::string::npos;
         found = findToken(message.text, token, begin)) {
        filled.append(message.text, begin, found - begin).append(argument);
        begin = found + token.size();
    }
    if (begin == 0) {
        std::cerr << "Warning: token " + token + " was not used in the message: \"" + argument +
                         "\"";
        return;
    }
    message.text = filled.append(message.text, begin);
}

}  // namespace

SystemMsg::SystemMsg(const std::string& text) : onlyText{0, text} {}

SystemMsg& SystemMsg::arg(std::int32_t argument) {
    fillNextToken(onlyText, std::to_string(argument));
    return *this;
}

SystemMsg::operator std::string() const {
    return onlyText.text;
}

UserMsg::UserMsg(const std::string& text, bool* /*flag*/)
    : shownText{0, text}, loggedText{0, text} {}

// By value, as the interface that this stands in for has it.
// NOLINTNEXTLINE(performance-unnecessary-value-param)
UserMsg& UserMsg::arg(std::string argument) {
    fillNextToken(shownText, argument);
    fillNextToken(loggedText, argument);
    return *this;
}

UserMsg::operator std::string() const {
    return shownText.text;
}

}  // namespace kiv
