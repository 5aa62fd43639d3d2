#include "Arguments.h"

#include <CLI/CLI.hpp>

#include "io/Source.h"

namespace kdx {
namespace {

/// What stands in front of the blank in "-j,--jobs N".
std::string namesIn(const std::string& synopsis) {
    return synopsis.substr(0, synopsis.find(' '));
}

/// What stands behind the blank; nothing without one.
std::string valueIn(const std::string& synopsis) {
    const std::size_t blank = synopsis.find(' ');
    return blank == std::string::npos ? std::string() : synopsis.substr(blank + 1);
}

template <typename Target>
CLI::Option& addOption(CLI::App& app, const std::string& synopsis, Target& target,
                       const std::string& description) {
    return *app.add_option(namesIn(synopsis), target, description)->type_name(valueIn(synopsis));
}

template <typename Number>
CLI::Option& addNumber(CLI::App& app, const std::string& synopsis, Number& target, Number minimum,
                       Number maximum, const std::string& description) {
    return *addOption(app, synopsis, target, description)
                .check(CLI::Range(minimum, maximum).description(""));
}

}  // namespace

const Argument& Argument::required() const {
    option.required();
    return *this;
}

const Argument& Argument::showDefault() const {
    option.capture_default_str();
    return *this;
}

const Argument& Argument::oneOf(const std::vector<std::string>& words) const {
    option.check(CLI::IsMember(words).description(""));
    return *this;
}

const Argument& Argument::needs(const std::string& other) const {
    option.needs(app.get_option(other));
    return *this;
}

const Argument& Argument::excludes(const std::string& other) const {
    option.excludes(app.get_option(other));
    return *this;
}

Argument Arguments::flag(const std::string& names, bool& target, const std::string& description) {
    return {app, *app.add_flag(names, target, description)};
}

Argument Arguments::text(const std::string& synopsis, std::string& target,
                         const std::string& description) {
    return {app, addOption(app, synopsis, target, description)};
}

Argument Arguments::text(const std::string& synopsis, std::optional<std::string>& target,
                         const std::string& description) {
    // Taken for an optional, the empty text would be none.
    const auto set = [&target](const std::string& text) { target = text; };
    CLI::Option* option = app.add_option_function<std::string>(namesIn(synopsis), set, description);
    return {app, *option->type_name(valueIn(synopsis))};
}

Argument Arguments::texts(const std::string& synopsis, std::vector<std::string>& target,
                          const std::string& description) {
    return {app, *addOption(app, synopsis, target, description).allow_extra_args(false)};
}

Argument Arguments::number(const std::string& synopsis, int& target, int minimum, int maximum,
                           const std::string& description) {
    return {app, addNumber(app, synopsis, target, minimum, maximum, description)};
}

Argument Arguments::number(const std::string& synopsis, std::size_t& target, std::size_t minimum,
                           std::size_t maximum, const std::string& description) {
    return {app, addNumber(app, synopsis, target, minimum, maximum, description)};
}

Argument Arguments::file(std::string& target) {
    target = kStandardInput;
    return text("FILE", target, "The file to read");
}

Argument Arguments::files(std::vector<std::string>& target) {
    return {app, addOption(app, "FILE", target,
                           "KDX files; a directory stands for the *.kdx files in it")};
}

void Arguments::filesAndPath(std::vector<std::string>& target, const std::string& rest,
                             const std::string& description) {
    files(target);  // takes everything; the others are for the help
    const auto unused = [](const std::string& /*argument*/) {};
    app.add_option_function<std::string>(
           "PATH", unused, "The object, as in kdx map: /Sample:s1/Channel:A; must be given")
        ->type_name("");
    app.add_option_function<std::string>(rest, unused, description)->type_name("");
}

Arguments Arguments::alternatives(const std::string& title) {
    CLI::Option_group* group = app.add_option_group(title);
    group->require_option(1);
    return Arguments(*group);
}

Command::Command(Program& givenProgram, const std::string& name, const std::string& description)
    : Arguments(*givenProgram.app.add_subcommand(name, description)), program(givenProgram) {}

void Command::footer(const std::string& text) {
    app.footer(text);
}

void Command::call(const std::function<Status(const Settings&)>& run) {
    app.callback([run, &shared = program] { shared.status = run(shared.settings); });
}

}  // namespace kdx
