#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace kdx {

/// What a message says behind a word that is none of those known: "; did you mean 'check'?", or
/// nothing when no word is like it. Long words are like none.
std::string suggestion(std::string_view word, const std::vector<std::string>& known);

}  // namespace kdx
