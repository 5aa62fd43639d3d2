#include "ReplaceFile.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <system_error>

#include "HeldSignals.h"
#include "TemporaryFile.h"
#include "base/Status.h"

namespace kdx {
namespace {

namespace fs = std::filesystem;

/// A file that is to be replaced, opened for its attributes.
class Target {
public:
    explicit Target(const std::string& argument)
        : path(canonical(argument)),
          opened(::open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC)) {
        if (opened.number < 0 || ::fstat(opened.number, &status) != 0) failReplace("the file");
        if (!S_ISREG(status.st_mode)) throw Trouble("cannot be replaced: it is no regular file");
    }

    /// Waits until no other run replaces the file: of two that compare it with what they read, and
    /// then rename, the first one's change would be lost. Not every file system can.
    void lock() const { (void)::flock(opened.number, LOCK_EX); }

    fs::path folder() const { return path.parent_path(); }

    /// Named after the file's number, which stays when the file is written to.
    fs::path safetyCopy() const {
        return folder() / (".kdx-saved-" + std::to_string(status.st_ino));
    }

    const fs::path path;
    const Descriptor opened;
    struct stat status {};

private:
    static fs::path canonical(const std::string& argument) {
        std::error_code error;
        fs::path path = fs::canonical(argument, error);
        if (error) failReplace("the file", error);
        return path;
    }
};

void requireAsRead(const Target& target, const Source& read) {
    if (!isAsRead(target.path.string(), read)) throw ChangedMeanwhile();
}

void requireNoSafetyCopy(const Target& target) {
    std::error_code unknown;
    const fs::path copy = target.safetyCopy();
    if (fs::exists(fs::symlink_status(copy, unknown)))
        throw Trouble("is left alone: another run is writing to it, or died meanwhile; then " +
                      copy.string() + " holds what it was: copy that into it, or remove that");
}

/// @return false, with everything as it was, when the file would lose what has to stay.
bool replaceByRename(const Target& target, const Source& read, const Pieces& contents) {
    if (target.status.st_nlink > 1) return false;
    TemporaryFile temporary(target.folder(), contents);
    if (!temporary.takeAttributes(target.opened.number, target.status)) return false;
    temporary.flush();
    requireAsRead(target, read);
    temporary.moveOver(target.path);
    return true;
}

void overwrite(int file, const Pieces& contents) {
    if (::lseek(file, 0, SEEK_SET) != 0) failReplace("seek");
    writeAll(file, contents);
    if (::ftruncate(file, ::lseek(file, 0, SEEK_CUR)) != 0) failReplace("truncate");
    if (::fsync(file) != 0) failReplace("flush");
}

/// What a file was, beside it while it is written to.
class SafetyCopy {
public:
    SafetyCopy(const Target& target, const Pieces& contents) : path(target.safetyCopy()) {
        TemporaryFile temporary(target.folder(), contents);
        temporary.flush();
        temporary.stayAs(path);
    }
    ~SafetyCopy() {
        if (!isNeeded) ::unlink(path.c_str());
    }
    SafetyCopy(const SafetyCopy&) = delete;
    SafetyCopy& operator=(const SafetyCopy&) = delete;

    const fs::path path;
    bool isNeeded = false;
};

void restore(int file, const Pieces& contents, const Trouble& trouble, SafetyCopy& copy) {
    try {
        overwrite(file, contents);
        copy.isNeeded = false;
    } catch (const Trouble&) {
        throw Trouble(std::string(trouble.what()) + "; it is broken now, and " +
                      copy.path.string() + " holds what it was");
    }
}

void writeInPlace(const Target& target, const Source& read, const Pieces& contents) {
    const Descriptor file(::open(target.path.c_str(), O_WRONLY | O_CLOEXEC));
    if (file.number < 0) failReplace("open it for writing");
    SafetyCopy copy(target, {read.buffer});
    requireAsRead(target, read);
    copy.isNeeded = true;
    try {
        overwrite(file.number, contents);
        copy.isNeeded = false;
    } catch (const Trouble& trouble) {
        restore(file.number, {read.buffer}, trouble, copy);
        throw;
    }
}

}  // namespace

void replaceFile(const std::string& path, const Source& read, const Pieces& contents) {
    const Target target(path);
    target.lock();  // before the signals are held, which may end a long wait
    const HeldSignals held;
    requireNoSafetyCopy(target);
    sweepFolder(target.folder());
    try {
        if (!replaceByRename(target, read, contents)) writeInPlace(target, read, contents);
    } catch (const ChangedMeanwhile&) {
        if (!holds(path, contents)) throw;
    }
}

}  // namespace kdx
