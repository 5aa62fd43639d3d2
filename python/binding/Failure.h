#pragma once

#include <pybind11/pybind11.h>

#include <kiv/KDXCheck.h>

#include <string>

#include "Text.h"

namespace kdx {

/// Lets the library's exceptions come up as the classes of kdx._errors.
void translateFailures();

/// KDXDecodeError for the first error of `text`, which `given` is.
/// @throws always
[[noreturn]] void throwDecodeError(py::handle given, const Text& text,
                                   const kiv::KDXCheck::Problem& problem);

/// KDXEncodeError.
/// @throws always
[[noreturn]] void throwEncodeError(const std::string& message);

}  // namespace kdx
