// The allocations of the whole program.

#include "support/Allocations.h"

#include <cstdlib>
#include <new>

namespace allocations {

std::size_t untilFailure = 0;
std::ptrdiff_t live = 0;
std::size_t all = 0;

}  // namespace allocations

// Inlined, these would look to g++ like the wrong ends of a plain malloc() or new.
[[gnu::noinline]] void* operator new(std::size_t size) {
    using namespace allocations;
    if (untilFailure != 0 && --untilFailure == 0) throw std::bad_alloc();
    void* memory = std::malloc(size == 0 ? 1 : size);
    if (memory == nullptr) throw std::bad_alloc();
    ++live;
    ++all;
    return memory;
}

void* operator new(std::size_t size, const std::nothrow_t& /*tag*/) noexcept {
    try {
        return operator new(size);
    } catch (const std::bad_alloc&) {
        return nullptr;
    }
}

[[gnu::noinline]] void operator delete(void* memory) noexcept {
    if (memory != nullptr) --allocations::live;
    std::free(memory);
}

[[gnu::noinline]] void operator delete(void* memory, std::size_t /*size*/) noexcept {
    operator delete(memory);
}
