#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "base/Settings.h"
#include "base/Status.h"

namespace CLI {
class App;
class Option;
}  // namespace CLI

namespace kdx {

/// kdx as a whole: what its arguments are, and what its commands are given and leave behind.
struct Program {
    CLI::App& app;
    Settings settings;             ///< complete when a command runs
    Status status = Status::fine;  ///< of the command that ran
};

/// An option or an argument that has been added, for what only some of them need.
class Argument {
public:
    Argument(CLI::App& givenApp, CLI::Option& givenOption) : app(givenApp), option(givenOption) {}

    /// It must be given.
    const Argument& required() const;

    /// The help shows the value that it has when it is left out.
    const Argument& showDefault() const;

    /// It takes one of these words alone.
    const Argument& oneOf(const std::vector<std::string>& words) const;

    /// It may be given only together with the other, which has been added before.
    const Argument& needs(const std::string& other) const;

    /// It may not be given together with the other, which has been added before.
    const Argument& excludes(const std::string& other) const;

private:
    CLI::App& app;
    CLI::Option& option;
};

/// The options and arguments of the program, of a command or of a group, in the order of the help.
///
/// Each has a synopsis as the help shows it: "-j,--jobs N" for an option with two names and a
/// value, "FILE" for an argument. Its target is written when it is given, and must live until then.
class Arguments {
public:
    explicit Arguments(CLI::App& givenApp) : app(givenApp) {}

    /// An option without a value, which makes the target true.
    Argument flag(const std::string& names, bool& target, const std::string& description);

    /// One text, which may be empty.
    Argument text(const std::string& synopsis, std::string& target, const std::string& description);

    /// The same, where it matters whether it was given at all.
    Argument text(const std::string& synopsis, std::optional<std::string>& target,
                  const std::string& description);

    /// An option that may be given several times, with one value each time.
    Argument texts(const std::string& synopsis, std::vector<std::string>& target,
                   const std::string& description);

    /// A whole number from `minimum` to `maximum`.
    Argument number(const std::string& synopsis, int& target, int minimum, int maximum,
                    const std::string& description);

    /// The same for a number without a sign.
    Argument number(const std::string& synopsis, std::size_t& target, std::size_t minimum,
                    std::size_t maximum, const std::string& description);

    /// The argument FILE, the standard input when it is left out.
    Argument file(std::string& target);

    /// The argument FILE..., any number of files and directories.
    Argument files(std::vector<std::string>& target);

    /// The arguments FILE..., PATH and a third one, such as NAME, which goes into the target with
    /// the others: splitFilesAndPath() tells them apart.
    void filesAndPath(std::vector<std::string>& target, const std::string& rest,
                      const std::string& description);

    /// A group, under a title of its own, of whose options exactly one must be given.
    Arguments alternatives(const std::string& title);

protected:
    CLI::App& app;
};

/// A subcommand, while it is set up.
class Command : public Arguments {
public:
    Command(Program& givenProgram, const std::string& name, const std::string& description);

    /// What the help says under the options; it ends with an example.
    void footer(const std::string& text);

    /// Has `run` called when the arguments name this command.
    /// @return what `run` is given, for the arguments to fill; lives as long as the program.
    template <typename Options>
    Options& onRun(Status (*run)(const Options&, const Settings&)) {
        const auto options = std::make_shared<Options>();
        call([options, run](const Settings& settings) { return run(*options, settings); });
        return *options;
    }

private:
    void call(const std::function<Status(const Settings&)>& run);

    Program& program;
};

}  // namespace kdx
