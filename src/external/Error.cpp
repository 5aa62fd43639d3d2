#include <kiv/Error.h>

namespace kiv {

Error::Error(const std::string& className, const std::string& functionName,
             const std::string& message, errorType type)
    : classNameText(className),
      functionNameText(functionName),
      messageText(message),
      errorKind(type) {}

Error::Error(const Error&) = default;
Error& Error::operator=(const Error&) = default;
Error::~Error() = default;

const std::string& Error::className() const noexcept {
    return classNameText;
}
const std::string& Error::functionName() const noexcept {
    return functionNameText;
}
const std::string& Error::message() const noexcept {
    return messageText;
}
errorType Error::type() const noexcept {
    return errorKind;
}

namespace internal {

error::error(const std::string& className, const std::string& functionName,
             const std::string& message, errorType type)
    : Error(className, functionName, message, type) {}

error::error(const error&) = default;
error& error::operator=(const error&) = default;
error::~error() = default;

}  // namespace internal

namespace data {

error::error(const std::string& className, const std::string& functionName,
             const std::string& message, errorType type)
    : Error(className, functionName, message, type) {}

error::error(const error&) = default;
error& error::operator=(const error&) = default;
error::~error() = default;

invalid::invalid(const std::string& className, const std::string& functionName,
                 const std::string& message, errorType type)
    : error(className, functionName, message, type) {}

invalid::invalid(const invalid&) = default;
invalid& invalid::operator=(const invalid&) = default;
invalid::~invalid() = default;

}  // namespace data
}  // namespace kiv
