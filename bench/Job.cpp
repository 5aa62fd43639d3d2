#include "Job.h"

#include <malloc.h>

#include <cstddef>
#include <new>

namespace bench {
namespace {

// A map built from the scattered blocks of a freed one costs far more than one built from fresh
// memory. The allocator joins free blocks when it has to find a large one. Of this size it keeps
// the block when it is freed, and with it the memory of the runs: no run pays for fresh pages, of
// which each is touched here.
void joinFreeBlocks() {
    constexpr std::size_t kLarge = std::size_t{24} << 20U;
    constexpr std::size_t kPage = 4096;
    void* const block = ::operator new(kLarge);
    for (std::size_t i = 0; i < kLarge; i += kPage) static_cast<volatile char*>(block)[i] = 0;
    ::operator delete(block);
}

}  // namespace

void prepareRun(Job& job) {
    job.prepare();
    if (job.takesFreshMemory())
        ::malloc_trim(0);
    else
        joinFreeBlocks();
}

}  // namespace bench
