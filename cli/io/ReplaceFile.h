#pragma once

#include <string>

#include "Source.h"
#include "base/Status.h"

namespace kdx {

/// A file is no longer as it was read.
class ChangedMeanwhile : public Trouble {
public:
    ChangedMeanwhile() : Trouble("is left alone: another program changed it after it was read") {}
};

/// Replaces what a file holds, which was read before. Owner, mode, extended attributes, access
/// control list and hard links stay; of a symbolic link, the file that it leads to is replaced.
/// Whenever the process dies, the file holds the old bytes or the new ones. Where that would lose
/// what has to stay, the file is written to instead, with a safety copy beside it while that lasts;
/// the copy of a run that died is reported by the next one. Signals that end the process wait until
/// the file is whole, and nothing else is left beside it. Waits for other runs that replace the
/// same file, and for who else holds an flock() on it.
/// @throws ChangedMeanwhile when the file is no longer as it was read, unless it holds the new
/// bytes already, as one does that was named twice; Trouble when it cannot be replaced. It is then
/// as it was, or the text names the safety copy.
void replaceFile(const std::string& path, const Source& read, const Pieces& contents);

}  // namespace kdx
