#include "LargePages.h"

#include <sys/mman.h>

#include <memory>

namespace kdx {

void preferLargePages(void* memory, std::size_t size) {
#ifdef MADV_HUGEPAGE
    constexpr std::size_t kLargePage = std::size_t{2} * 1024 * 1024;
    if (std::align(kLargePage, kLargePage, memory, size) != nullptr)
        (void)::madvise(memory, size / kLargePage * kLargePage, MADV_HUGEPAGE);
#else
    (void)memory;
    (void)size;
#endif
}

}  // namespace kdx
