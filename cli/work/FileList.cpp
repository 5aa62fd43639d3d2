#include "FileList.h"

#include <algorithm>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <set>
#include <string_view>
#include <system_error>
#include <utility>

#include "io/FileState.h"
#include "io/Source.h"
#include "messages/Diagnostics.h"
#include "text/Glob.h"

namespace kdx {
namespace {

namespace fs = std::filesystem;

/// Whether an entry, which is no link, is to be read. When that cannot be told, reading it says
/// why. Unlike entry.status(), it asks the system only where the folder does not tell the type.
bool isFile(const fs::directory_entry& entry) {
    std::error_code unknown;
    return entry.is_regular_file(unknown) || unknown;
}

bool isHidden(const fs::path& path) {
    return path.filename().u8string().front() == '.';
}

/// Whether the user wants a file or folder below an argument to be left out.
bool isExcluded(const fs::path& path, const fs::path& argument,
                const std::vector<std::string>& globs) {
    if (globs.empty()) return false;
    const std::string below = path.lexically_relative(argument).generic_u8string();
    const std::string name = path.filename().u8string();
    return std::any_of(globs.begin(), globs.end(), [&](std::string_view glob) {
        if (!glob.empty() && glob.back() == '/') glob.remove_suffix(1);  // as many write folders
        return matchesGlob(glob.find('/') == std::string_view::npos ? name : below, glob);
    });
}

/// Finds the files of one folder, and the folders in it.
void searchFolder(const fs::path& folder, std::vector<std::string>& files,
                  std::vector<fs::path>& folders,
                  const std::function<bool(const fs::path&)>& skips) {
    std::error_code unknown;
    for (const fs::directory_entry& entry : fs::directory_iterator(folder)) {
        if (entry.is_symlink(unknown) || isHidden(entry.path()) || skips(entry.path())) continue;
        if (entry.is_directory(unknown))
            folders.push_back(entry.path());
        else if (entry.path().extension() == ".kdx" && isFile(entry))
            files.push_back(entry.path().u8string());
    }
}

void reportTrouble(FileList& list, const std::string& name, std::string_view text,
                   const Settings& settings) {
    appendTrouble(list.diagnostics, name, text, settings);
    list.status = Status::trouble;
}

void listFolder(const std::string& argument, FileList& list, const Settings& settings) {
    const std::size_t before = list.files.size();
    const std::size_t saidBefore = list.diagnostics.size();
    const fs::path top = fs::u8path(argument);
    const auto skips = [&](const fs::path& path) {
        return isExcluded(path, top, settings.excludes);
    };
    std::vector<fs::path> folders{top};
    while (!folders.empty()) {
        const fs::path folder = std::move(folders.back());
        folders.pop_back();
        try {
            searchFolder(folder, list.files, folders, skips);
        } catch (const fs::filesystem_error& error) {
            reportTrouble(list, folder.u8string(), "cannot be searched: " + error.code().message(),
                          settings);
        }
    }
    std::sort(list.files.begin() + static_cast<std::ptrdiff_t>(before), list.files.end());
    if (list.files.size() == before && list.diagnostics.size() == saidBefore)
        reportTrouble(list, argument, "is a directory without *.kdx files", settings);
}

}  // namespace

FileList listFiles(const std::vector<std::string>& arguments, const Settings& settings) {
    if (arguments.empty()) return {{kStandardInput}, {}, Status::fine};
    if (std::count(arguments.begin(), arguments.end(), kStandardInput) > 1)
        throw Trouble("the standard input (-) can be read only once");

    FileList list;
    for (const std::string& argument : arguments) {
        std::error_code missing;
        if (argument != kStandardInput && fs::is_directory(fs::u8path(argument), missing))
            listFolder(argument, list, settings);
        else
            list.files.push_back(argument);
    }
    return list;
}

void leaveOutRepeated(std::vector<std::string>& files) {
    std::set<std::pair<std::uint64_t, std::uint64_t>> seen;
    const auto isRepeated = [&](const std::string& file) {
        const FileState state = stateOf(file);
        return !(state == FileState()) && !seen.emplace(state.device, state.number).second;
    };
    files.erase(std::remove_if(files.begin(), files.end(), isRepeated), files.end());
}

}  // namespace kdx
