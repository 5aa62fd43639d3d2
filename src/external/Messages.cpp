#include <kiv/Messages.h>

namespace kiv {

SystemMsg::SystemMsg(const std::string& text) : onlyText{0, text} {}

SystemMsg::operator std::string() const {
    return onlyText.text;
}

UserMsg::UserMsg(const std::string& text, bool* /*flag*/)
    : shownText{0, text}, loggedText{0, text} {}

UserMsg::operator std::string() const {
    return shownText.text;
}

}  // namespace kiv
