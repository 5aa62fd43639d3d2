#pragma once

#include <kiv/StringMapMap.h>

#include <string>
#include <string_view>
#include <vector>

namespace kdx {

/// Prints the map as a JSON object of objects of strings, keys in map order.
/// @throws Trouble for text that is no UTF-8, which JSON cannot hold; what stands before it has
/// then been printed.
void printJson(const kiv::StringMapMap& map);

/// Prints one line "PATH<tab>NAME<tab>VALUE" for each parameter.
void printFlat(const kiv::StringMapMap& map);

/// Whether the map has an object inside the one with this path.
bool hasObjectIn(const kiv::StringMapMap& map, const std::string& path);

/// The paths of the objects that flat lines do not show: without a parameter, and without an object
/// in them.
std::vector<std::string> leftOutOfFlat(const kiv::StringMapMap& map);

/// Appends the parameters of one object as a JSON object; `margin` goes in front of all lines but
/// the first.
void appendJson(std::string& out, const kiv::StringMapMap::mapped_type& parameters,
                std::string_view margin);

/// Reads what printJson() wrote; numbers, true and false are taken as the text they are.
/// @throws Trouble for JSON that is no such map, or that has a key twice.
kiv::StringMapMap readJson(std::string_view text);

/// Reads what printFlat() printed. Objects without parameters are not in it.
/// @throws Trouble for a line without two tabs, and for a parameter that stands twice.
kiv::StringMapMap readFlat(std::string_view text);

}  // namespace kdx
