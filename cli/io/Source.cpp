#include "Source.h"

#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <memory>
#include <system_error>
#include <vector>

#include "base/Status.h"

namespace kdx {
namespace {

namespace fs = std::filesystem;

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
constexpr std::size_t kRoomToGrow = 50;  // a part of the size, for edits made in a text's memory
constexpr std::size_t kFirstChunk = std::size_t{64} * 1024;
constexpr std::size_t kLargestOfDevice = std::size_t{16} * 1024 * 1024;

struct CloseFile {
    void operator()(std::FILE* file) const { (void)std::fclose(file); }
};
using File = std::unique_ptr<std::FILE, CloseFile>;

[[noreturn]] void failRead(int error) {
    throw Trouble("cannot be read: " + std::generic_category().message(error));
}

/// Whether a path leads to a device such as a terminal, or /dev/zero, which never ends.
bool isDevice(const std::string& path) {
    std::error_code unknown;
    return fs::is_character_file(fs::u8path(path), unknown);
}

/// Reads to the end. `size` is a guess that saves memory where it is right.
std::string readAll(std::FILE* file, std::size_t size, bool fromDevice) {
    std::string buffer;
    buffer.reserve(size + size / kRoomToGrow);
    std::size_t used = 0;
    do {
        if (used == buffer.size()) buffer.resize(used == 0 ? size : 2 * used);
        errno = 0;
        used += std::fread(buffer.data() + used, 1, buffer.size() - used, file);
        if (fromDevice && used > kLargestOfDevice)
            throw Trouble(
                "is a device that seems never to end: copy what is wanted of it to a file");
    } while (used == buffer.size());
    if (std::ferror(file) != 0) failRead(errno);
    buffer.resize(used);
    return buffer;
}

File openFile(const std::string& path) {
    errno = 0;
    File file(std::fopen(path.c_str(), "rb"));
    if (!file) failRead(errno);
    return file;
}

void readFile(const std::string& path, Source& source) {
    std::error_code error;
    if (fs::is_directory(fs::u8path(path), error)) throw Trouble("is a directory, not a file");
    const File file = openFile(path);
    source.state = stateOf(file.get());
    const auto size = static_cast<std::size_t>(source.state.size);
    source.buffer = size == 0 ? readAll(file.get(), kFirstChunk, isDevice(path))
                              : readAll(file.get(), size + 1, false);
}

/// Whether a file holds these bytes and no others from where it stands on.
bool endsWith(std::FILE* file, std::string_view bytes) {
    std::vector<char> chunk(kFirstChunk);
    for (;;) {
        errno = 0;
        const std::size_t count = std::fread(chunk.data(), 1, chunk.size(), file);
        if (std::ferror(file) != 0) failRead(errno);
        if (bytes.substr(0, count) != std::string_view(chunk.data(), count)) return false;
        bytes.remove_prefix(count);
        if (count < chunk.size()) return bytes.empty();
    }
}

}  // namespace

std::string_view Source::byteOrderMark() const {
    return hasByteOrderMark ? kByteOrderMark : std::string_view();
}

std::string_view Source::text() const {
    return std::string_view(buffer).substr(byteOrderMark().size());
}

std::string Source::takeText() && {
    buffer.erase(0, byteOrderMark().size());
    return std::move(buffer);
}

std::string displayName(const std::string& argument) {
    return argument == kStandardInput ? "<stdin>" : argument;
}

Source readSource(const std::string& argument) {
    Source source;
    source.name = displayName(argument);
    if (argument == kStandardInput)
        source.buffer = readAll(stdin, kFirstChunk, isDevice("/dev/stdin"));
    else
        readFile(argument, source);
    source.hasByteOrderMark = source.buffer.compare(0, kByteOrderMark.size(), kByteOrderMark) == 0;
    return source;
}

bool isAsRead(const std::string& path, const Source& read) {
    const File file = openFile(path);
    return stateOf(file.get()) == read.state && endsWith(file.get(), read.buffer) &&
           stateOf(file.get()) == read.state;
}

bool holds(const std::string& path, std::string_view bytes) {
    return endsWith(openFile(path).get(), bytes);
}

}  // namespace kdx
