#include "Source.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <memory>
#include <system_error>

#include "Diagnostics.h"

namespace kdx {
namespace {

namespace fs = std::filesystem;

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
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
    return fs::is_character_file(path, unknown);
}

/// Reads to the end. `size` is a guess that saves memory where it is right.
std::string readAll(std::FILE* file, std::size_t size, bool fromDevice) {
    std::string buffer;
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

std::string readFile(const std::string& path) {
    std::error_code error;
    if (fs::is_directory(path, error)) throw Trouble("is a directory, not a file");
    errno = 0;
    const File file(std::fopen(path.c_str(), "rb"));
    if (!file) failRead(errno);
    const std::uintmax_t size = fs::file_size(path, error);
    if (error || size == 0) return readAll(file.get(), kFirstChunk, isDevice(path));
    return readAll(file.get(), static_cast<std::size_t>(size) + 1, false);
}

/// Whether an entry is to be read. When that cannot be told, reading it says why.
bool isFile(const fs::directory_entry& entry) {
    std::error_code unknown;
    const fs::file_type type = entry.status(unknown).type();
    return type == fs::file_type::regular || type == fs::file_type::none;
}

/// Finds the files of one folder, and the folders in it; links to folders are not followed, and
/// links to nothing passed over.
void searchFolder(const fs::path& folder, std::vector<std::string>& files,
                  std::vector<fs::path>& folders) {
    std::error_code unknown;
    for (const fs::directory_entry& entry : fs::directory_iterator(folder)) {
        if (entry.is_directory(unknown) && !entry.is_symlink(unknown))
            folders.push_back(entry.path());
        else if (entry.path().extension() == ".kdx" && isFile(entry))
            files.push_back(entry.path().string());
    }
}

void reportTrouble(FileList& list, const std::string& name, std::string_view text,
                   const Settings& settings) {
    appendTrouble(list.diagnostics, name, text, settings);
    list.status = Status::trouble;
}

void listFolder(const std::string& argument, FileList& list, const Settings& settings) {
    const std::size_t before = list.files.size();
    std::vector<fs::path> folders{argument};
    while (!folders.empty()) {
        const fs::path folder = std::move(folders.back());
        folders.pop_back();
        try {
            searchFolder(folder, list.files, folders);
        } catch (const fs::filesystem_error& error) {
            reportTrouble(list, folder.string(), "cannot be searched: " + error.code().message(),
                          settings);
        }
    }
    std::sort(list.files.begin() + static_cast<std::ptrdiff_t>(before), list.files.end());
    if (list.files.size() == before && list.diagnostics.empty())
        reportTrouble(list, argument, "is a directory without *.kdx files", settings);
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
    source.buffer = argument == kStandardInput ? readAll(stdin, kFirstChunk, isDevice("/dev/stdin"))
                                               : readFile(argument);
    source.hasByteOrderMark = source.buffer.compare(0, kByteOrderMark.size(), kByteOrderMark) == 0;
    return source;
}

FileList listFiles(const std::vector<std::string>& arguments, const Settings& settings) {
    if (arguments.empty()) return {{kStandardInput}, {}, Status::fine};
    if (std::count(arguments.begin(), arguments.end(), kStandardInput) > 1)
        throw Trouble("the standard input (-) can be read only once");

    FileList list;
    for (const std::string& argument : arguments) {
        std::error_code missing;
        if (argument != kStandardInput && fs::is_directory(argument, missing))
            listFolder(argument, list, settings);
        else
            list.files.push_back(argument);
    }
    return list;
}

}  // namespace kdx
