#pragma once

#include <string>
#include <string_view>

// An object goes by its name or, when that is empty, by its type. A name that is the type need not
// be written. Writers put a mark in front of the type of an object that replaces another one, and
// name an object, without that mark, in the comment of its END.
namespace kiv::detail {

inline std::string_view nameOrType(std::string_view type, std::string_view name) {
    return name.empty() ? type : name;
}

/// The name as it is written: empty when the type says it all.
inline std::string_view writtenName(std::string_view type, std::string_view name) {
    return name == type ? name.substr(0, 0) : name;
}

constexpr std::string_view kReplaceMark = "&replace ";

inline std::string_view withoutReplaceMark(std::string_view type) {
    const bool marked = type.substr(0, kReplaceMark.size()) == kReplaceMark;
    return marked ? type.substr(kReplaceMark.size()) : type;
}

/// Appends "# TYPE:NAME", the comment of an END.
inline void appendEndComment(std::string& text, std::string_view type, std::string_view name) {
    text.append("# ").append(withoutReplaceMark(type)).append(":").append(writtenName(type, name));
}

}  // namespace kiv::detail
