#include "FileState.h"

#include <sys/stat.h>

namespace kdx {
namespace {

FileState stateFrom(const struct stat& status) {
    constexpr std::int64_t kNanoseconds = 1000000000;
    return {status.st_dev, status.st_ino, static_cast<std::uint64_t>(status.st_size),
            status.st_mtim.tv_sec * kNanoseconds + status.st_mtim.tv_nsec};
}

}  // namespace

FileState stateOf(std::FILE* file) {
    struct stat status {};
    return ::fstat(::fileno(file), &status) == 0 ? stateFrom(status) : FileState();
}

FileState stateOf(const std::string& path) {
    struct stat status {};
    return ::stat(path.c_str(), &status) == 0 ? stateFrom(status) : FileState();
}

}  // namespace kdx
