#pragma once

#include <string>

#include "ReadChecked.h"
#include "Settings.h"
#include "Work.h"

namespace kdx {

/// The text of a source, indented, with line ends that are all alike: carriage return and line
/// feed where every line of the source ends so, else line feeds.
/// @return false when a line cannot be laid out without loss; the outcome then says why.
/// @throws Trouble when the new text would not mean what the old one means.
bool formatSource(const CheckedSource& source, const Settings& settings, std::string& formatted,
                  Outcome& outcome);

}  // namespace kdx
