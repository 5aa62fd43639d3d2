#pragma once

#include <cstdint>
#include <cstdio>
#include <string>
#include <tuple>

namespace kdx {

/// Which file it is, and what tells one state of it from the next.
struct FileState {
    std::uint64_t device = 0;
    std::uint64_t number = 0;  ///< of the file on its device
    std::uint64_t size = 0;
    std::int64_t changed = 0;  ///< when it was last written to, as finely as the system has it

    bool operator==(const FileState& other) const {
        return std::tie(device, number, size, changed) ==
               std::tie(other.device, other.number, other.size, other.changed);
    }
};

/// The state of an open file; an empty one where the system does not tell.
FileState stateOf(std::FILE* file);

/// The same for the file that a path leads to; an empty one where there is none.
FileState stateOf(const std::string& path);

}  // namespace kdx
