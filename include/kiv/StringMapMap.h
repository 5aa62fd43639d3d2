#pragma once

#include <map>
#include <string>

namespace kiv {

/// KDX objects as a flat map: object path to parameter name to parameter value, all byte strings,
/// both levels in byte order.
///
/// The path of an object is the path of the object around it (empty at the top level), "/", its
/// type, then ":" and its name when the name is neither empty nor equal to the type. Nothing is
/// escaped in it. An object without parameters has an entry with an empty inner map.
///
///     map["/Sample:s1/Channel:A"]["Gain"] = "2";
///
/// Every key spells out the whole path, so that n objects nested inside one another, and nothing
/// else, make keys of n * n / 2 components in all.
using StringMapMap = std::map<std::string, std::map<std::string, std::string>>;

}  // namespace kiv
