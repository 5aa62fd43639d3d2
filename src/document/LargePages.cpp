#include "document/LargePages.h"

#ifdef __linux__
#include <sys/mman.h>

#include <cstdint>
#endif

namespace kiv::detail {

#ifdef MADV_HUGEPAGE
void hintLargePages(void* memory, std::size_t size) noexcept {
    constexpr std::size_t kWorthIt = std::size_t{4} << 20U;
    constexpr std::uintptr_t kPage = std::uintptr_t{64} << 10U;  // the largest that is usual
    if (size < kWorthIt) return;
    const auto address = reinterpret_cast<std::uintptr_t>(memory);
    const std::uintptr_t skipped = (kPage - address % kPage) % kPage;
    (void)::madvise(static_cast<char*>(memory) + skipped, size - skipped, MADV_HUGEPAGE);
}
#else
void hintLargePages(void*, std::size_t) noexcept {}
#endif

}  // namespace kiv::detail
