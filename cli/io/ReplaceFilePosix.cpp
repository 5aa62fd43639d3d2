#include "ReplaceFile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <system_error>
#include <utility>

#include "base/Status.h"

namespace kdx {
namespace {

namespace fs = std::filesystem;

[[noreturn]] void failReplace(const std::string& step) {
    throw Trouble("cannot be replaced: " + step + ": " + std::generic_category().message(errno));
}

/// A new file in a folder, which disappears again unless it takes the place of another one.
class TemporaryFile {
public:
    /// Its name is not made of the target's, which may be as long as a name can be.
    explicit TemporaryFile(const fs::path& target)
        : path((target.parent_path() / ".kdx-XXXXXX").string()),
          descriptor(::mkstemp(path.data())) {
        if (descriptor < 0) failReplace("a new file beside it");
    }

    ~TemporaryFile() {
        if (descriptor >= 0) ::close(descriptor);
        if (!path.empty()) ::unlink(path.c_str());
    }

    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;

    void write(std::string_view contents) const {
        while (!contents.empty()) {
            const ssize_t count = ::write(descriptor, contents.data(), contents.size());
            if (count < 0 && errno == EINTR) continue;
            if (count < 0) failReplace("write");
            contents.remove_prefix(static_cast<std::size_t>(count));
        }
    }

    /// The owner first: changing it may take bits off the mode.
    void takeOwnerAndMode(const struct stat& from) const {
        struct stat own {};
        if (::fstat(descriptor, &own) != 0) failReplace("its owner");
        const bool sameOwner = own.st_uid == from.st_uid && own.st_gid == from.st_gid;
        if (!sameOwner && ::fchown(descriptor, from.st_uid, from.st_gid) != 0)
            failReplace("its owner");
        if (::fchmod(descriptor, from.st_mode & 07777U) != 0) failReplace("its mode");
    }

    void moveOver(const fs::path& target) {
        if (::fsync(descriptor) != 0) failReplace("flush");
        const int closing = std::exchange(descriptor, -1);
        if (::close(closing) != 0) failReplace("close");
        if (std::rename(path.c_str(), target.c_str()) != 0) failReplace("rename");
        path.clear();
    }

private:
    std::string path;
    int descriptor;
};

/// Makes a rename last. Not every file system can; the rename stands all the same.
void flushFolder(const fs::path& folder) {
    const int descriptor = ::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (descriptor < 0) return;
    ::fsync(descriptor);
    ::close(descriptor);
}

}  // namespace

void replaceFile(const std::string& path, std::string_view contents) {
    std::error_code error;
    const fs::path target = fs::canonical(path, error);
    struct stat old {};
    if (error || ::stat(target.c_str(), &old) != 0) failReplace("the file");
    if (!S_ISREG(old.st_mode)) throw Trouble("cannot be replaced: it is no regular file");

    TemporaryFile temporary(target);
    temporary.write(contents);
    temporary.takeOwnerAndMode(old);
    temporary.moveOver(target);
    flushFolder(target.parent_path());
}

}  // namespace kdx
