#include "TemporaryFile.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <mutex>
#include <set>

#include "ExtendedAttributes.h"
#include "base/Status.h"

namespace kdx {
namespace {

namespace fs = std::filesystem;

constexpr std::string_view kPrefix = ".kdx-";
constexpr std::string_view kPattern = ".kdx-XXXXXX";

bool isTemporaryName(std::string_view name) {
    constexpr std::string_view kLetters =
        "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789";
    return name.size() == kPattern.size() && name.substr(0, kPrefix.size()) == kPrefix &&
           name.find_first_not_of(kLetters, kPrefix.size()) == std::string_view::npos;
}

/// A process holds a lock on its temporary file as long as it lives.
void removeIfAbandoned(const fs::path& path) {
    const Descriptor file(::open(path.c_str(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC));
    struct stat status {};
    if (file.number < 0 || ::fstat(file.number, &status) != 0) return;
    const uid_t user = ::geteuid();
    if (!S_ISREG(status.st_mode) || (user != 0 && status.st_uid != user)) return;
    if (::flock(file.number, LOCK_EX | LOCK_NB) == 0) ::unlink(path.c_str());
}

}  // namespace

void failReplace(const std::string& step, std::error_code why) {
    throw Trouble("cannot be replaced: " + step + ": " + why.message());
}

void failReplace(const std::string& step) {
    failReplace(step, {errno, std::generic_category()});
}

Descriptor::~Descriptor() {
    if (number >= 0) ::close(number);
}

void writeAll(int file, const Pieces& contents) {
    for (std::string_view bytes : contents) {
        while (!bytes.empty()) {
            const ssize_t count = ::write(file, bytes.data(), bytes.size());
            if (count < 0 && errno == EINTR) continue;
            if (count < 0) failReplace("write");
            bytes.remove_prefix(static_cast<std::size_t>(count));
        }
    }
}

void flushFolder(const fs::path& folder) {
    const Descriptor opened(::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (opened.number >= 0) ::fsync(opened.number);
}

/// Until it is locked, another process may take it for abandoned and remove it.
TemporaryFile::TemporaryFile(const fs::path& givenFolder) : folder(givenFolder) {
    struct stat status {};
    do {
        if (descriptor >= 0) ::close(descriptor);
        path = (folder / kPattern).string();
        descriptor = ::mkstemp(path.data());
        if (descriptor < 0) failReplace("a new file beside it");
        (void)::flock(descriptor, LOCK_EX);
    } while (::fstat(descriptor, &status) == 0 && status.st_nlink == 0);
}

TemporaryFile::TemporaryFile(const fs::path& givenFolder, const Pieces& contents)
    : TemporaryFile(givenFolder) {
    writeAll(descriptor, contents);
}

TemporaryFile::~TemporaryFile() {
    if (descriptor >= 0) ::close(descriptor);
    if (!path.empty()) ::unlink(path.c_str());
}

/// The owner first: changing it may take bits off the mode, as the access control list does.
bool TemporaryFile::takeAttributes(int from, const struct stat& status) const {
    struct stat own {};
    if (::fstat(descriptor, &own) != 0) return false;
    const bool sameOwner = own.st_uid == status.st_uid && own.st_gid == status.st_gid;
    if (!sameOwner && ::fchown(descriptor, status.st_uid, status.st_gid) != 0) return false;
    return copyExtendedAttributes(from, descriptor) &&
           ::fchmod(descriptor, status.st_mode & 07777U) == 0;
}

void TemporaryFile::flush() const {
    if (::fsync(descriptor) != 0) failReplace("flush");
}

void TemporaryFile::moveOver(const fs::path& target) {
    if (std::rename(path.c_str(), target.c_str()) != 0) failReplace("rename");
    path.clear();
    flushFolder(folder);
}

void TemporaryFile::stayAs(const fs::path& name) {
    if (::link(path.c_str(), name.c_str()) != 0) failReplace("a safety copy beside it");
    flushFolder(folder);
}

void sweepFolder(const fs::path& folder) {
    static std::mutex mutex;
    static std::set<fs::path> swept;
    const std::lock_guard lock(mutex);
    if (!swept.insert(folder).second) return;
    std::error_code error;
    for (fs::directory_iterator entry(folder, error), end; !error && entry != end;
         entry.increment(error))
        if (isTemporaryName(entry->path().filename().string())) removeIfAbandoned(entry->path());
}

}  // namespace kdx
