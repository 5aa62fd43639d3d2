#pragma once

#include <string_view>

// An object goes by its name or, when that is empty, by its type. A name that is the type need not
// be written.
namespace kiv::detail {

inline std::string_view nameOrType(std::string_view type, std::string_view name) {
    return name.empty() ? type : name;
}

/// The name as it is written: empty when the type says it all.
inline std::string_view writtenName(std::string_view type, std::string_view name) {
    return name == type ? name.substr(0, 0) : name;
}

}  // namespace kiv::detail
