#pragma once

#include <filesystem>
#include <string>
#include <system_error>

#include "Source.h"

struct stat;

namespace kdx {

/// @throws Trouble that says at which step a file could not be replaced, and why.
[[noreturn]] void failReplace(const std::string& step, std::error_code why);

/// The same for what the last system call left.
[[noreturn]] void failReplace(const std::string& step);

/// An open file, which is closed again.
class Descriptor {
public:
    explicit Descriptor(int openFile) : number(openFile) {}
    ~Descriptor();
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;

    const int number;  ///< negative when it could not be opened
};

/// Writes at the place where a file stands. @throws Trouble when that fails.
void writeAll(int file, const Pieces& contents);

/// Makes a change in a folder last. Not every file system can; the change stands all the same.
void flushFolder(const std::filesystem::path& folder);

/// A new file in a folder, which disappears again unless it takes the place of another one. Its
/// name is not made of another's, which may be as long as a name can be.
class TemporaryFile {
public:
    /// Holds these bytes. @throws Trouble when it cannot be made, as do those below.
    TemporaryFile(const std::filesystem::path& givenFolder, const Pieces& contents);
    ~TemporaryFile();
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;

    /// @return whether it has the owner, the mode and the extended attributes of an open file.
    bool takeAttributes(int from, const struct stat& status) const;

    void flush() const;

    void moveOver(const std::filesystem::path& target);

    /// Lets it stay under a name that no other file has.
    void stayAs(const std::filesystem::path& name);

private:
    explicit TemporaryFile(const std::filesystem::path& givenFolder);

    std::filesystem::path folder;
    std::string path;
    int descriptor = -1;
};

/// Removes the temporary files that processes left in a folder when they were killed; those of
/// living ones stay. Once for each folder.
void sweepFolder(const std::filesystem::path& folder);

}  // namespace kdx
