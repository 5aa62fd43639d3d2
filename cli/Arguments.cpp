#include <CLI/CLI.hpp>

#include "Commands.h"
#include "Source.h"

namespace kdx {

void addFiles(CLI::App& command, std::vector<std::string>& files) {
    command.add_option("FILE", files, "KDX files; a directory stands for the *.kdx files in it")
        ->type_name("");
}

CLI::Option* addFile(CLI::App& command, std::string& file) {
    file = kStandardInput;
    return command.add_option("FILE", file, "The file to read")->type_name("");
}

}  // namespace kdx
