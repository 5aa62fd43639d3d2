#include <algorithm>
#include <array>
#include <filesystem>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include <kiv/StringMapMap.h>

#include "Commands.h"
#include "comparison/Differences.h"
#include "comparison/Statements.h"
#include "io/Output.h"
#include "maps/Utf8Check.h"
#include "text/JsonText.h"
#include "text/ShownText.h"
#include "work/ReadChecked.h"

namespace kdx {
namespace {

namespace fs = std::filesystem;

constexpr const char* kNoFile = "/dev/null";  // as git names what is not there
constexpr const char* kNoMode = ".";

struct Options {
    std::vector<std::string> files;
    bool ignoreOrder = false;
    bool git = false;
};

/// One of two files that are compared.
struct Side {
    std::string name;
    std::string text;
    std::vector<Statement> statements;
};

using Sides = std::array<Side, 2>;

/// What is said around the differences of two files.
struct Labels {
    std::string name;  ///< in JSON; nothing where two files alone are compared
    std::string head;
    std::string nothing;  ///< in place of differences, where comments or layout alone differ
    std::string same;     ///< where nothing differs
};

// ---- Two files.

/// Whether JSON can hold what differs; says what it cannot hold.
bool fitsJson(const Side& side, const std::vector<Difference>& list,
              const Statement* Difference::*which, const StatementTable& table,
              const Settings& settings) {
    kiv::StringMapMap shown;
    for (const Difference& difference : list) {
        if (difference.*which == nullptr) continue;
        const auto content = table.content((difference.*which)->number);
        if (content.kind == kiv::MiniKDXParser::lineObject)
            shown[table.path((difference.*which)->number)];
        if (content.kind == kiv::MiniKDXParser::lineParameter)
            shown[table.path(content.container)].emplace(content.first, content.second);
    }
    Findings findings(kDefaultMaxErrors);
    checkUtf8(side.text, shown, findings);
    std::string diagnostics;
    findings.append(diagnostics, side.name, settings, "");
    writeError(diagnostics);
    return findings.errors() == 0;
}

bool fitJson(const Sides& sides, const std::vector<Difference>& list, const StatementTable& table,
             const Options& options, const Settings& settings) {
    if (options.git) return true;  // nobody has checked the texts for what the search builds on
    const bool beforeFits = fitsJson(sides[0], list, &Difference::before, table, settings);
    return fitsJson(sides[1], list, &Difference::after, table, settings) && beforeFits;
}

void noteAmbiguity(const std::string& path, const std::string& file, const Settings& settings) {
    if (path.empty()) return;
    std::string diagnostics;
    appendProblem(diagnostics, file,
                  {Severity::note,
                   "slash-in-name",
                   {},
                   "in " + path + " a '/' belongs to a name: other objects may have the same path"},
                  settings);
    writeError(diagnostics);
}

Status read(const std::array<std::string, 2>& files, Sides& sides, const Options& options,
            const Settings& settings) {
    if (files[0] == kStandardInput && files[1] == kStandardInput)
        throw Trouble("the standard input (-) can be read only once");
    const auto readSide = [&](const std::string& file, std::size_t index) {
        Outcome outcome;
        sides.at(index).name = displayName(file);
        if (options.git && file == kNoFile) return outcome;
        std::optional<Source> source =
            options.git ? readSource(file)
                        : readChecked(file, Demand::structure, settings, outcome);
        if (source) sides.at(index).text = std::move(*source).takeText();
        return outcome;
    };
    return workOnFiles({{files[0], files[1]}, {}, Status::fine}, settings, readSide);
}

std::vector<Difference> compare(Sides& sides, StatementTable& table, bool ignoreOrder) {
    auto& [before, after] = sides;
    return ignoreOrder ? differencesInAnyOrder(before.statements, after.statements, table)
                       : differences(before.statements, after.statements, table);
}

std::size_t lastLine(const Side& side) {
    return side.statements.empty() ? 0 : side.statements.back().line;
}

Status compareFiles(const std::array<std::string, 2>& files, const Labels& labels,
                    const Options& options, const Settings& settings) {
    Sides sides;
    const Status status = read(files, sides, options, settings);
    if (status != Status::fine) return status;
    const auto& [before, after] = sides;

    StatementTable table;
    for (Side& side : sides) side.statements = readStatements(side.text, settings.maxDepth, table);
    DifferenceText text(table, settings, labels.name, std::max(lastLine(before), lastLine(after)));
    const std::vector<Difference> list = compare(sides, table, options.ignoreOrder);
    if (list.empty()) {
        if (!settings.json) writeOutput(before.text == after.text ? labels.same : labels.nothing);
        return Status::fine;
    }
    if (settings.json && !fitJson(sides, list, table, options, settings)) return Status::trouble;
    for (const Difference& difference : list) text.append(difference);
    if (!settings.json) writeOutput(labels.head);
    writeOutput(text.text);
    noteAmbiguity(text.ambiguousPath, labels.name.empty() ? after.name : labels.name, settings);
    return Status::findings;
}

std::string headOf(const std::string& before, const std::string& after) {
    return "--- " + before + "\n+++ " + after + '\n';
}

// ---- Two folders.

/// The files in a folder and below it, by their names in it.
std::vector<std::string> namesIn(const std::string& folder, const Settings& settings,
                                 Status& status) {
    FileList list = listFiles({folder}, settings);
    writeError(list.diagnostics);
    status = worse(status, list.status);
    for (std::string& file : list.files)
        file = fs::u8path(file).lexically_relative(fs::u8path(folder)).generic_u8string();
    std::sort(list.files.begin(), list.files.end());
    return std::move(list.files);
}

std::string joined(const std::string& folder, const std::string& name) {
    return (fs::u8path(folder) / fs::u8path(name)).u8string();
}

void tellMissing(const std::string& folder, const std::string& name, const char* change,
                 const Settings& settings) {
    writeOutput(settings.json ? jsonText({{"file", name}, {"change", change}}) + '\n'
                              : "only in " + folder + ": " + name + '\n');
}

Status compareFolders(const std::string& before, const std::string& after, const Options& options,
                      const Settings& settings) {
    Status status = Status::fine;
    const std::vector<std::string> namesBefore = namesIn(before, settings, status);
    const std::vector<std::string> namesAfter = namesIn(after, settings, status);
    auto a = namesBefore.begin();
    auto b = namesAfter.begin();
    while (a != namesBefore.end() || b != namesAfter.end()) {
        const bool onlyBefore = b == namesAfter.end() || (a != namesBefore.end() && *a < *b);
        const bool onlyAfter = a == namesBefore.end() || (b != namesAfter.end() && *b < *a);
        if (onlyBefore || onlyAfter) {
            onlyBefore ? tellMissing(before, *a++, "removed", settings)
                       : tellMissing(after, *b++, "added", settings);
            status = worse(status, Status::findings);
            continue;
        }
        const std::array<std::string, 2> files{joined(before, *a), joined(after, *b)};
        const Labels labels{*a, headOf(files[0], files[1]), "", ""};
        status = worse(status, compareFiles(files, labels, options, settings));
        ++a;
        ++b;
    }
    return status;
}

// ---- As git asks.

/// The arguments of git, where it has a version on both sides, are
///
///     PATH OLD-FILE OLD-ID OLD-MODE NEW-FILE NEW-ID NEW-MODE [NEW-PATH WHAT-BECAME-OF-IT]
///
/// and of a file that is being merged PATH alone.
Status compareForGit(const Options& options, const Settings& settings) {
    const std::vector<std::string>& arguments = options.files;
    if (arguments.size() == 1) {
        writeOutput("* unmerged: " + arguments[0] + '\n');
        return Status::fine;
    }
    if (arguments.size() != 7 && arguments.size() != 9)
        throw Trouble("--git is for git: it takes the arguments of a diff driver");
    const std::array<std::string, 2> files{arguments[1], arguments[4]};
    const std::string& path = arguments[0];
    const std::string& newPath = arguments.size() == 9 ? arguments[7] : path;
    Labels labels;
    labels.name = newPath;
    if (arguments.size() == 9) labels.head = arguments[8];
    if (arguments[3] != arguments[6] && arguments[3] != kNoMode && arguments[6] != kNoMode)
        labels.head += "old mode " + arguments[3] + "\nnew mode " + arguments[6] + '\n';
    const bool isNews = !labels.head.empty() || files[0] == kNoFile || files[1] == kNoFile;
    labels.head += headOf(files[0] == kNoFile ? kNoFile : "a/" + path,
                          files[1] == kNoFile ? kNoFile : "b/" + newPath);
    labels.nothing = labels.head + "  only comments or layout\n";
    if (isNews) labels.same = labels.head;
    try {
        const Status status = compareFiles(files, labels, options, settings);
        return status == Status::findings ? Status::fine : status;  // 1 would end git
    } catch (const Trouble& trouble) {
        if (settings.json) throw;
        writeOutput(labels.head + "  " + trouble.what() + '\n');  // git goes on to the next file
        return Status::fine;
    }
}

/// What a folder cannot be compared with may be a slip of the pen.
[[noreturn]] void failForFolder(const std::string& file) {
    std::error_code unknown;
    if (file != kStandardInput && !std::filesystem::exists(file, unknown))
        throw Trouble("there is no file or folder " + shown(file));
    throw Trouble("a file cannot be compared with a folder");
}

Status run(const Options& options, const Settings& settings) {
    if (options.git) return compareForGit(options, settings);
    if (options.files.size() != 2) throw Trouble("diff takes two files, or two folders");
    const auto isFolder = [](const std::string& file) {
        std::error_code unknown;
        return file != kStandardInput && fs::is_directory(fs::u8path(file), unknown);
    };
    const std::array<std::string, 2> files{options.files[0], options.files[1]};
    if (isFolder(files[0]) != isFolder(files[1])) failForFolder(files[isFolder(files[0]) ? 1 : 0]);
    if (isFolder(files[0])) return compareFolders(files[0], files[1], options, settings);
    return compareFiles(files, {}, options, settings);
}

}  // namespace

void addDiff(Program& program) {
    Command command(program, "diff", "Print what two files, or two folders, say differently");
    Options& options = command.onRun(run);
    command.files(options.files).required();
    command.flag("--ignore-order", options.ignoreOrder,
                 "Take texts for the same whose map and actions are the same");
    command.flag("--git", options.git, "Take the arguments that git gives a diff driver");
    command.footer(
        "Compared are the objects, parameters, actions and verbatim lines, each in its object, in\n"
        "their order. Comments, layout and line ends do not matter, nor does it whether an object\n"
        "without a name bears the name of its type. With --ignore-order, of repeated objects and\n"
        "parameters the first counts, as in kdx map. Each line begins with the number of the line\n"
        "in its file. Of texts that differ in much, more may be printed than had to be. Of two\n"
        "folders, the files of the same name are compared. The exit status is 1 when anything\n"
        "differs; with --git it is 0 then, and texts are compared that are no KDX, too.\n\n"
        "Example:\n  kdx diff old.kdx new.kdx\n"
        "  git config diff.kdx.command 'kdx diff --git --'; echo '*.kdx diff=kdx' >> "
        ".gitattributes");
}

}  // namespace kdx
