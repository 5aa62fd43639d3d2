#pragma once

#include <kiv/KDXText.h>

#include <string_view>

#include "check/NamesSeen.h"

namespace kiv::detail {

/// An object whose END has not been read.
struct OpenObject {
    SeenName name;
    KDXPlace begin;
    std::string_view indentation;  ///< without data when it is not known
};

}  // namespace kiv::detail
