#pragma once

#include <nlohmann/json.hpp>

#include <cstddef>
#include <stdexcept>
#include <string>

namespace kdx::lsp {

using Json = nlohmann::json;

/// The protocol's numbers for why a request gets no result.
enum class ErrorCode : int {
    parseError = -32700,
    invalidRequest = -32600,
    methodNotFound = -32601,
    invalidParams = -32602,
    internalError = -32603,
    serverNotInitialized = -32002,
    requestFailed = -32803,
    requestCancelled = -32800,
};

/// What is answered in place of a result; the text is for the user to read.
class RequestError : public std::runtime_error {
public:
    RequestError(ErrorCode givenCode, const std::string& message)
        : std::runtime_error(message), errorCode(givenCode) {}
    ErrorCode code() const noexcept { return errorCode; }

private:
    ErrorCode errorCode;
};

/// JSON as text. Texts of a client are UTF-8, but a message may quote a part of a character.
inline std::string written(const Json& json) {
    return json.dump(-1, ' ', false, Json::error_handler_t::replace);
}

/// A member that has to be there and to be a number that counts something.
/// @throws RequestError, or Json::exception when it is not there.
inline std::size_t countAt(const Json& json, const char* name) {
    const Json& member = json.at(name);
    if (member.is_number_unsigned()) return member.get<std::size_t>();
    throw RequestError(ErrorCode::invalidParams, std::string(name) + " is no count");
}

/// The same for a text, which lives as long as the JSON.
inline const std::string& textAt(const Json& json, const char* name) {
    return json.at(name).get_ref<const std::string&>();
}

}  // namespace kdx::lsp
