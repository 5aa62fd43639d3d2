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
constexpr std::size_t kFirstChunk = 64 * 1024;

struct CloseFile {
    void operator()(std::FILE* file) const { std::fclose(file); }
};
using File = std::unique_ptr<std::FILE, CloseFile>;

[[noreturn]] void failRead(int error) {
    throw Trouble("cannot be read: " + std::generic_category().message(error));
}

/// Reads to the end. `size` is a guess that saves memory where it is right.
std::string readAll(std::FILE* file, std::size_t size) {
    std::string buffer;
    std::size_t used = 0;
    do {
        if (used == buffer.size()) buffer.resize(used == 0 ? size : 2 * used);
        errno = 0;
        used += std::fread(buffer.data() + used, 1, buffer.size() - used, file);
    } while (used == buffer.size());
    if (std::ferror(file) != 0) failRead(errno);
    buffer.resize(used);
    return buffer;
}

std::string readFile(const std::string& path) {
    if (fs::is_directory(path)) throw Trouble("is a directory, not a file");
    errno = 0;
    const File file(std::fopen(path.c_str(), "rb"));
    if (!file) failRead(errno);
    std::error_code unknownSize;
    const std::uintmax_t size = fs::file_size(path, unknownSize);
    if (unknownSize || size == 0) return readAll(file.get(), kFirstChunk);
    return readAll(file.get(), static_cast<std::size_t>(size) + 1);
}

void appendFilesBelow(const std::string& directory, std::vector<std::string>& files) {
    const std::size_t before = files.size();
    for (const fs::directory_entry& entry : fs::recursive_directory_iterator(directory))
        if (entry.path().extension() == ".kdx" && entry.is_regular_file())
            files.push_back(entry.path().string());
    std::sort(files.begin() + static_cast<std::ptrdiff_t>(before), files.end());
    if (files.size() == before) throw Trouble("is a directory without *.kdx files");
}

}  // namespace

std::string_view Source::text() const {
    return std::string_view(buffer).substr(hasByteOrderMark ? kByteOrderMark.size() : 0);
}

std::string Source::takeText() && {
    if (hasByteOrderMark) buffer.erase(0, kByteOrderMark.size());
    return std::move(buffer);
}

std::string displayName(const std::string& argument) {
    return argument == kStandardInput ? "<stdin>" : argument;
}

Source readSource(const std::string& argument) {
    Source source;
    source.name = displayName(argument);
    source.buffer = argument == kStandardInput ? readAll(stdin, kFirstChunk) : readFile(argument);
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
        if (argument == kStandardInput || !fs::is_directory(argument, missing)) {
            list.files.push_back(argument);
            continue;
        }
        try {
            appendFilesBelow(argument, list.files);
        } catch (const fs::filesystem_error& error) {
            appendTrouble(list.diagnostics, argument,
                          "cannot be searched: " + error.code().message(), settings);
            list.status = Status::trouble;
        } catch (const Trouble& trouble) {
            appendTrouble(list.diagnostics, argument, trouble.what(), settings);
            list.status = Status::trouble;
        }
    }
    return list;
}

}  // namespace kdx
