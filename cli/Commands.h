#pragma once

#include <string>
#include <vector>

#include "Settings.h"
#include "Status.h"

namespace CLI {
class App;
class Option;
}  // namespace CLI

namespace kdx {

/// What a command is given, and where it leaves its status. The settings are complete when the
/// command runs.
struct Session {
    Settings settings;
    Status status = Status::fine;
};

/// Each of these adds one subcommand, which runs when the arguments name it.
void addCheck(CLI::App& app, Session& session);
void addCompletion(CLI::App& app, Session& session);
void addDiff(CLI::App& app, Session& session);
void addFind(CLI::App& app, Session& session);
void addFmt(CLI::App& app, Session& session);
void addGet(CLI::App& app, Session& session);
void addManual(CLI::App& app, Session& session);
void addMap(CLI::App& app, Session& session);
void addSplit(CLI::App& app, Session& session);
void addStrip(CLI::App& app, Session& session);
void addTree(CLI::App& app, Session& session);
void addWrite(CLI::App& app, Session& session);

/// Adds the argument FILE..., any number of files and directories.
void addFiles(CLI::App& command, std::vector<std::string>& files);

/// Adds the argument FILE, the standard input when it is left out.
CLI::Option* addFile(CLI::App& command, std::string& file);

}  // namespace kdx
