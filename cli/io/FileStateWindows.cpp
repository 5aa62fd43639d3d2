#include <windows.h>

#include <io.h>

#include <memory>

#include "FileState.h"

namespace kdx {
namespace {

std::uint64_t joined(DWORD high, DWORD low) {
    return std::uint64_t{high} << 32U | low;
}

}  // namespace

FileState stateOf(std::FILE* file) {
    // NOLINTNEXTLINE(performance-no-int-to-ptr): what the runtime hands out is a number
    const auto handle = reinterpret_cast<HANDLE>(_get_osfhandle(_fileno(file)));
    BY_HANDLE_FILE_INFORMATION found{};
    if (::GetFileInformationByHandle(handle, &found) == 0) return {};
    const FILETIME& written = found.ftLastWriteTime;
    return {found.dwVolumeSerialNumber, joined(found.nFileIndexHigh, found.nFileIndexLow),
            joined(found.nFileSizeHigh, found.nFileSizeLow),
            static_cast<std::int64_t>(joined(written.dwHighDateTime, written.dwLowDateTime))};
}

FileState stateOf(const std::string& path) {
    const std::unique_ptr<std::FILE, int (*)(std::FILE*)> file(std::fopen(path.c_str(), "rb"),
                                                               std::fclose);
    return file ? stateOf(file.get()) : FileState();
}

}  // namespace kdx
