#pragma once

#include <cstddef>

namespace kiv::detail {

/// Says that memory is about to be filled, of which so far nothing was: the system may back it with
/// large pages, where it has such. A fault for every 4 KiB takes a third of the time in which a
/// document is loaded. Does nothing for less than 4 MiB, and nothing fails.
void hintLargePages(void* memory, std::size_t size) noexcept;

}  // namespace kiv::detail
