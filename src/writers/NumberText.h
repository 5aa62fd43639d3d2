#pragma once

#include <string>

namespace kiv::detail {

/// Significant digits of a number in a text.
constexpr int kSignificantDigits = 6;

/// A number as "%g" writes it in the classic locale, whatever the locale of the program.
std::string numberText(double value);

}  // namespace kiv::detail
