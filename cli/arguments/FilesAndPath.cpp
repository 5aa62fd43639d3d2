#include "FilesAndPath.h"

#include <algorithm>
#include <filesystem>
#include <iterator>
#include <system_error>

#include "base/Status.h"
#include "text/ShownText.h"

namespace kdx {
namespace {

namespace fs = std::filesystem;

bool beginsWithSlash(const std::string& argument) {
    return !argument.empty() && argument.front() == '/';
}

bool isFile(const std::string& argument) {
    std::error_code unknown;
    return fs::exists(fs::u8path(argument), unknown);
}

bool isRegularFile(const std::string& argument) {
    std::error_code unknown;
    return fs::is_regular_file(fs::u8path(argument), unknown);
}

}  // namespace

FilesAndPath splitFilesAndPath(std::vector<std::string> arguments) {
    const auto last = std::find_if(arguments.rbegin(), arguments.rend(), beginsWithSlash);
    const auto path = last == arguments.rend() ? arguments.begin() + 1 : std::prev(last.base());
    if (arguments.size() < 2 && last == arguments.rend())
        throw Trouble("PATH is required: the path of an object, such as /Sample:s1");
    if (path == arguments.begin() && isFile(*path))
        throw Trouble(shown(*path) +
                      " is a file; begin the PATH behind it with a '/', or put a '-' "
                      "in front of it where it is the path of an object in the standard input");
    if (!beginsWithSlash(*path) && isRegularFile(*path))
        throw Trouble(shown(*path) + " is a file; begin the PATH behind it with a '/'");
    const auto move = [](auto begin, auto end) {
        return std::vector<std::string>(std::move_iterator(begin), std::move_iterator(end));
    };
    return {move(arguments.begin(), path), std::move(*path), move(path + 1, arguments.end())};
}

}  // namespace kdx
