#pragma once

#include <kiv/KDXFormatting.h>

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "base/Settings.h"

namespace kdx {

/// Which value a parameter has that stands in several texts. Of one text it is the first.
enum class Taken { first, last };

/// Prints the objects of several texts as a JSON array, in the order in which they first come: a
/// line for each object, with type, name, parameters and the objects in it. Types and names are
/// kept apart, so that no '/' in a name is taken for a level. `takesType` says which types of
/// objects at the top level are taken.
/// @throws Trouble for text that is no UTF-8.
void printNested(const std::vector<std::string_view>& texts, Taken taken,
                 const std::function<bool(std::string_view type)>& takesType);

/// Makes KDX of what printNested() printed.
/// @throws Trouble for JSON that is no such array, or holds what KDX cannot carry.
std::string readNested(std::string_view json, const Settings& settings,
                       const kiv::KDXFormatting::Style& style);

}  // namespace kdx
