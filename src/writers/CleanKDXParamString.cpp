#include <kiv/CleanKDXParamString.h>

#include <utility>

namespace kiv {

CleanKDXParamString::CleanKDXParamString(const std::string& value)
    : text(value, 0, value.find_last_not_of('\\') + 1) {}
CleanKDXParamString::CleanKDXParamString(const CleanKDXParamString&) = default;
CleanKDXParamString& CleanKDXParamString::operator=(const CleanKDXParamString&) = default;
CleanKDXParamString::~CleanKDXParamString() = default;

CleanKDXParamString::CleanKDXParamString(CleanKDXParamString&& other) noexcept
    : text(std::exchange(other.text, {})) {}

CleanKDXParamString& CleanKDXParamString::operator=(CleanKDXParamString&& other) noexcept {
    text = std::exchange(other.text, {});
    return *this;
}

const std::string& CleanKDXParamString::str() const {
    return text;
}
CleanKDXParamString::operator const std::string&() const {
    return text;
}

}  // namespace kiv
