#include "Source.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <memory>
#include <system_error>

#include "LargePages.h"
#include "base/Status.h"

namespace kdx {
namespace {

namespace fs = std::filesystem;

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
constexpr std::size_t kRoomToGrow = 50;  // a part of the size, for edits made in a text's memory
constexpr std::size_t kStep = std::size_t{256} * 1024;
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
    preferLargePages(buffer.data(), buffer.capacity());
    std::size_t used = 0;
    do {
        // In steps, so that what is filled with zeros is in the cache when it is read into.
        buffer.resize(std::max(used + 1, std::min(buffer.capacity(), used + kStep)));
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
    (void)std::setvbuf(file.get(), nullptr, _IONBF, 0);  // it is read into a buffer as it is
    return file;
}

void readOpened(std::FILE* file, const std::string& path, Source& source) {
    source.state = stateOf(file);
    const auto size = static_cast<std::size_t>(source.state.size);
    source.buffer =
        size == 0 ? readAll(file, kFirstChunk, isDevice(path)) : readAll(file, size + 1, false);
}

/// Whether it is a directory is asked of what cannot be read, not of every file.
void readFile(const std::string& path, Source& source) {
    try {
        readOpened(openFile(path).get(), path, source);
    } catch (const Trouble&) {
        std::error_code unknown;
        if (fs::is_directory(fs::u8path(path), unknown))
            throw Trouble("is a directory, not a file");
        throw;
    }
}

std::size_t readChunk(std::FILE* file, std::vector<char>& chunk, std::size_t size) {
    errno = 0;
    const std::size_t count = std::fread(chunk.data(), 1, std::min(size, chunk.size()), file);
    if (std::ferror(file) != 0) failRead(errno);
    return count;
}

/// Whether a file holds these bytes and no others from where it stands on.
bool endsWith(std::FILE* file, const Pieces& pieces) {
    std::vector<char> chunk(kFirstChunk);
    for (std::string_view bytes : pieces) {
        while (!bytes.empty()) {
            const std::size_t count = readChunk(file, chunk, bytes.size());
            if (count == 0 || bytes.substr(0, count) != std::string_view(chunk.data(), count))
                return false;
            bytes.remove_prefix(count);
        }
    }
    return readChunk(file, chunk, 1) == 0;
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
    return stateOf(file.get()) == read.state && endsWith(file.get(), {read.buffer}) &&
           stateOf(file.get()) == read.state;
}

bool holds(const std::string& path, const Pieces& bytes) {
    return endsWith(openFile(path).get(), bytes);
}

}  // namespace kdx
