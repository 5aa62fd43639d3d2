#pragma once

#include <kiv/MiniKDXParser.h>

#include <cstddef>
#include <string>
#include <string_view>

namespace kiv::detail {

using LineType = MiniKDXParser::lineType;

/// The kind of one line. The first `nameLength` bytes of the line are known to be name characters,
/// of which the first is no blank: they are not looked at again.
LineType classifyLine(std::string_view line, std::size_t nameLength = 0);

/// Cuts line after line into its kind and its two halves, which are what
/// MiniKDXParser::determineLineType() gives: views of the line, or of the splitter where a name's
/// whitespace had to be simplified.
class LineSplitter {
public:
    LineType split(std::string_view line);

    std::string_view first() const { return firstHalf; }
    std::string_view second() const { return secondHalf; }

private:
    std::string_view firstHalf;
    std::string_view secondHalf;
    std::string simplifiedFirst;
    std::string simplifiedSecond;
};

}  // namespace kiv::detail
