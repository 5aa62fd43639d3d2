#include "FileList.h"

#include <algorithm>
#include <filesystem>
#include <system_error>

#include "io/Source.h"
#include "messages/Diagnostics.h"

namespace kdx {
namespace {

namespace fs = std::filesystem;

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
