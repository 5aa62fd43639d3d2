#pragma once

#include <kiv/MiniKDXParser.h>

#include <cstddef>
#include <string>
#include <string_view>

namespace kiv::detail {

/// A line's kind and, of an object, a parameter or an unrecognised line, its halves as they stand
/// in the line.
struct ClassifiedLine {
    MiniKDXParser::lineType type;
    std::string_view first;
    std::string_view second;
};

/// Classifies one line; the halves are views of it. The first `nameLength` bytes of the line are
/// known to be name characters, of which the first is no blank: they are not looked at again.
ClassifiedLine classifyLine(std::string_view line, std::size_t nameLength = 0);

/// Makes `first` and `second` the halves as callers get them, without blanks that carry no
/// meaning. The views in `line` must not lie in `first` or `second`.
void assignHalves(const ClassifiedLine& line, std::string& first, std::string& second);

}  // namespace kiv::detail
