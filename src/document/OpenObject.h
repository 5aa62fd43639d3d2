#pragma once

#include <kiv/KDXText.h>

#include <string_view>

#include "document/NamesSeen.h"

namespace kiv::detail {

/// What writers put in front of the type of an object that replaces another, and sometimes in front
/// of its indentation.
constexpr std::string_view kReplaceMark = "&replace ";

/// An object whose END has not been read.
struct OpenObject {
    SeenName name;
    KDXPlace begin;
    std::string_view indentation;  ///< without data when it is not known
};

}  // namespace kiv::detail
