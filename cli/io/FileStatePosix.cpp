#include "FileState.h"

#include <sys/stat.h>

namespace kdx {

FileState stateOf(std::FILE* file) {
    struct stat status {};
    if (::fstat(::fileno(file), &status) != 0) return {};
    constexpr std::int64_t kNanoseconds = 1000000000;
    return {status.st_dev, status.st_ino, static_cast<std::uint64_t>(status.st_size),
            status.st_mtim.tv_sec * kNanoseconds + status.st_mtim.tv_nsec};
}

}  // namespace kdx
