#include <windows.h>

#include <algorithm>
#include <filesystem>
#include <system_error>

#include "ReplaceFile.h"
#include "base/Status.h"

namespace kdx {
namespace {

namespace fs = std::filesystem;

[[noreturn]] void failReplace(const std::string& step) {
    const auto error = static_cast<int>(::GetLastError());
    throw Trouble("cannot be replaced: " + step + ": " + std::system_category().message(error));
}

bool isWritten(HANDLE file, std::string_view bytes) {
    while (!bytes.empty()) {
        constexpr std::size_t kLargest = 1U << 30U;
        DWORD count = 0;
        const auto size = static_cast<DWORD>(std::min(bytes.size(), kLargest));
        if (::WriteFile(file, bytes.data(), size, &count, nullptr) == 0) return false;
        bytes.remove_prefix(count);
    }
    return true;
}

void writeFlushed(const fs::path& path, const Pieces& contents) {
    const HANDLE file = ::CreateFileW(path.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_NEW,
                                      FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file == INVALID_HANDLE_VALUE) failReplace("a new file beside it");
    const bool written = std::all_of(contents.begin(), contents.end(), [&](std::string_view bytes) {
        return isWritten(file, bytes);
    });
    const bool flushed = written && ::FlushFileBuffers(file) != 0;
    ::CloseHandle(file);
    if (!flushed) failReplace("write");
}

}  // namespace

void replaceFile(const std::string& path, const Source& read, const Pieces& contents) {
    std::error_code error;
    const fs::path target = fs::canonical(fs::u8path(path), error);
    if (error) throw Trouble("cannot be replaced: the file: " + error.message());
    fs::path temporary = target;
    temporary += ".tmp-" + std::to_string(::GetCurrentProcessId());
    try {
        writeFlushed(temporary, contents);
        if (!isAsRead(target.u8string(), read)) throw ChangedMeanwhile();
        if (::ReplaceFileW(target.c_str(), temporary.c_str(), nullptr, 0, nullptr, nullptr) == 0)
            failReplace("rename");
    } catch (const ChangedMeanwhile&) {
        fs::remove(temporary, error);
        if (!holds(path, contents)) throw;
    } catch (const Trouble&) {
        fs::remove(temporary, error);
        throw;
    }
}

}  // namespace kdx
