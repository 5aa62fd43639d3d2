#include "LargePages.h"

namespace kdx {

void preferLargePages(void* /*memory*/, std::size_t /*size*/) {}

}  // namespace kdx
