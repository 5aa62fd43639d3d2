#pragma once

#include <cstddef>

/// Operator new, as the programs that link Allocations.cpp have it.
namespace allocations {

extern std::size_t untilFailure;  ///< the allocation with this number fails; 0: none does
extern std::ptrdiff_t live;
extern std::size_t all;  ///< so far

}  // namespace allocations
