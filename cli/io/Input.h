#pragma once

#include <chrono>
#include <cstddef>

namespace kdx {

/// Waits until the standard input has something to read, or has ended, but no longer than this.
/// @return false when there is still nothing.
bool inputArrives(std::chrono::milliseconds patience);

/// Reads what the standard input has, up to `size` bytes, and waits only while it has nothing. Not
/// to be mixed with reading by streams, which keep what they have read ahead.
/// @return how many bytes; 0 at the end.
/// @throws Trouble when that fails.
std::size_t readInput(char* buffer, std::size_t size);

}  // namespace kdx
