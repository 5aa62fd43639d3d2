#include "Protocol.h"

namespace kdx::lsp {

std::size_t countAt(const Json& json, const char* name) {
    const Json& member = json.at(name);
    if (!member.is_number_unsigned())
        throw RequestError(ErrorCode::invalidParams, std::string(name) + " is no count");
    return member.get<std::size_t>();
}

const std::string& textAt(const Json& json, const char* name) {
    return json.at(name).get_ref<const std::string&>();
}

}  // namespace kdx::lsp
