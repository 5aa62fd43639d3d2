#pragma once

#include <string>
#include <vector>

namespace kdx {

/// The files that a command works on, the path of an object in them, and what stands behind that.
struct FilesAndPath {
    std::vector<std::string> files;  ///< none stands for the standard input
    std::string path;
    std::vector<std::string> rest;  ///< names, or names with values
};

/// Divides arguments at the path: the last one that begins with '/'. Files stand in front of it,
/// and no name begins so. Where none does, the first argument is the file and the second the path.
/// @throws Trouble when there is no path, and when what stands in its place is an existing file.
FilesAndPath splitFilesAndPath(std::vector<std::string> arguments);

}  // namespace kdx
