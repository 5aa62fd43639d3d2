#include <array>
#include <charconv>

#include "NumberText.h"

namespace kiv::detail {

std::string numberText(double value) {
    std::array<char, 32> buffer{};
    char* const begin = buffer.data();
    char* const end = std::to_chars(begin, begin + buffer.size(), value, std::chars_format::general,
                                    kSignificantDigits)
                          .ptr;
    return {begin, end};
}

}  // namespace kiv::detail
