#include "Job.h"

#include <cstddef>
#include <new>

namespace bench {
namespace {

// A map built from the scattered blocks of a freed one costs far more than one built from fresh
// memory. The allocator joins free blocks when it has to find a large one. Of this size it keeps
// the block when it is freed, and with it the memory of the runs: no run pays for fresh pages.
void joinFreeBlocks() {
    constexpr std::size_t kLarge = std::size_t{24} << 20U;
    void* volatile block = ::operator new(kLarge);
    ::operator delete(block);
}

}  // namespace

void prepareRun(Job& job) {
    job.prepare();
    joinFreeBlocks();
}

}  // namespace bench
