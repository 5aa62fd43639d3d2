#pragma once

#include <kiv/MiniKDXParser.h>

#include <cstddef>
#include <string>
#include <string_view>

namespace kiv::detail {

/// The kind of one line. The first `nameLength` bytes of the line are known to be name characters,
/// of which the first is no blank: they are not looked at again.
MiniKDXParser::lineType classifyLine(std::string_view line, std::size_t nameLength = 0);

/// The kind of one line and its two halves, as MiniKDXParser::determineLineType() gives them.
/// `line` must not lie in `first` or `second`.
MiniKDXParser::lineType splitLine(std::string_view line, std::string& first, std::string& second);

}  // namespace kiv::detail
