#include <kiv/KDXDocument.h>
#include <kiv/KDXPath.h>

#include <algorithm>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "Commands.h"
#include "arguments/FilesAndPath.h"
#include "maps/MapText.h"
#include "maps/PathReader.h"
#include "maps/SlashCheck.h"
#include "text/JsonText.h"
#include "text/ShownText.h"
#include "work/ReadChecked.h"

namespace kdx {
namespace {

using kiv::KDXDocument;
using kiv::MiniKDXParser;

struct Options {
    std::vector<std::string> arguments;
    std::optional<std::string> defaultValue;
    bool quiet = false;
    bool withPlace = false;
    bool zero = false;
};

/// What is asked of each file, and how the answer is printed.
struct Query {
    std::string path;
    bool isPattern = false;
    std::vector<std::string> names;  ///< none stands for all
    bool isPlain = false;            ///< whether the answer is one value, or one object
    bool json = false;
    const Options& options;
};

/// A parameter, as readers see it.
struct Value {
    std::string text;
    std::optional<kiv::KDXPlace> place;  ///< none of a default
};

using Parameters = std::map<std::string, Value>;
using Objects = std::map<std::string, Parameters>;

bool isPattern(const kiv::KDXSteps& steps) {
    return std::any_of(steps.begin(), steps.end(), [](const kiv::KDXStep& step) {
        return step.anyDepth || !step.type || !step.name;
    });
}

/// The object that a path names, with the parameters of all that stand at this path.
Objects readObject(std::string_view text, const std::string& path) {
    using Part = kiv::KDXReader::Part;
    Objects objects;
    Parameters* parameters = nullptr;
    PathReader paths(text);
    const kiv::KDXReader& reader = paths.statement();
    while (paths.next()) {
        if (paths.path() != path) continue;
        if (parameters == nullptr) parameters = &objects[path];
        if (reader.kind() != MiniKDXParser::lineParameter) continue;
        const auto [entry, isNew] = parameters->try_emplace(std::string(reader.first()));
        if (isNew) entry->second = {std::string(reader.second()), reader.placeOf(Part::second)};
    }
    return objects;
}

std::string pathOf(const KDXDocument& document, KDXDocument::Node object) {
    std::vector<KDXDocument::Node> around;
    for (; object != document.root(); object = document.parent(object)) around.push_back(object);
    std::string path;
    for (auto node = around.rbegin(); node != around.rend(); ++node)
        kiv::appendLevel(path, document.first(*node), document.second(*node));
    return path;
}

void readParameters(const KDXDocument& document, KDXDocument::Node object, Parameters& parameters) {
    using Part = kiv::KDXReader::Part;
    for (auto node = document.firstChild(object); node != KDXDocument::Node::none;
         node = document.nextSibling(node)) {
        if (document.kind(node) != MiniKDXParser::lineParameter) continue;
        const auto [entry, isNew] = parameters.try_emplace(document.first(node));
        if (isNew) entry->second = {document.second(node), document.placeOf(node, Part::second)};
    }
}

/// The objects that a pattern matches, by their paths.
Objects readObjects(std::string text, const std::string& pattern) {
    const KDXDocument document(std::move(text));
    Objects objects;
    for (const KDXDocument::Node object : document.findObjects(kiv::readPath(pattern)))
        if (object != document.root())
            readParameters(document, object, objects[pathOf(document, object)]);
    return objects;
}

/// The answers of one file.
class Answer {
public:
    Answer(std::string givenFile, const Query& givenQuery)
        : file(std::move(givenFile)), query(givenQuery) {}

    void addObject(const std::string& path, const Parameters& parameters) {
        if (query.json && query.isPlain) return addJson(parameters);
        if (!query.json && query.isPattern) addLine("# " + path);
        for (const auto& [name, value] : parameters) addValue(path, name, value);
    }

    void addValue(const std::string& path, const std::string& name, const Value& value) {
        if (query.json) return addLine(jsonOf(path, name, value));
        std::string line;
        if (query.options.withPlace) line = placeOf(value) + ": ";
        if (query.names.empty()) line.append(name).append(" = ");
        addLine(line + value.text);
    }

    std::string text;

private:
    void addLine(const std::string& line) {
        text.append(line).append(1, query.options.zero ? '\0' : '\n');
    }

    void addJson(const Parameters& parameters) {
        kiv::StringMapMap::mapped_type values;
        for (const auto& [name, value] : parameters) values.emplace(name, value.text);
        std::string line;
        appendJson(line, values, "");
        addLine(line);
    }

    std::string placeOf(const Value& value) const {
        if (!value.place) return file;
        return file + ':' + std::to_string(value.place->line) + ':' +
               std::to_string(value.place->column);
    }

    std::string jsonOf(const std::string& path, const std::string& name, const Value& value) const {
        if (query.isPlain) {
            std::string line;
            appendJsonString(line, value.text);
            return line;
        }
        JsonMembers members{{"file", file}};
        if (value.place) {
            members.emplace_back("line", value.place->line);
            members.emplace_back("column", value.place->column);
        }
        members.insert(members.end(), {{"path", path}, {"name", name}, {"value", value.text}});
        return jsonText(members);
    }

    std::string file;
    const Query& query;
};

/// Adds the values of a parameter. @return whether there is one.
bool addValues(Answer& answer, const Objects& objects, const std::string& name,
               const Query& query) {
    bool found = false;
    for (const auto& [path, parameters] : objects) {
        const auto parameter = parameters.find(name);
        if (parameter != parameters.end()) {
            answer.addValue(path, name, parameter->second);
        } else if (query.options.defaultValue) {
            answer.addValue(path, name, {*query.options.defaultValue, std::nullopt});
        } else {
            continue;
        }
        found = true;
    }
    if (!objects.empty() || !query.options.defaultValue) return found;
    answer.addValue(query.path, name, {*query.options.defaultValue, std::nullopt});
    return true;
}

/// Answers, and returns what is not there.
std::vector<std::string> answerFrom(const Objects& objects, const Query& query, Answer& answer) {
    std::vector<std::string> missing;
    if (objects.empty() && (query.names.empty() || !query.options.defaultValue))
        return {"object " + shown(query.path)};
    if (query.names.empty())
        for (const auto& [path, parameters] : objects) answer.addObject(path, parameters);
    for (const std::string& name : query.names)
        if (!addValues(answer, objects, name, query))
            missing.push_back("parameter " + shownName(name) + " in " + shown(query.path));
    return missing;
}

/// Tells of an object at the path whose name, or one around it, holds a '/'.
void warnOfSlashes(std::string_view text, const Query& query, Findings& findings) {
    kiv::StringMapMap around;
    std::size_t end = query.path.find('/', 1);
    if (end == std::string::npos) return;
    for (; end != std::string::npos; end = query.path.find('/', end + 1))
        around[query.path.substr(0, end)];
    around[query.path];
    checkSlashes(text, around, findings);
}

Outcome getFrom(const std::string& file, const Query& query, const Settings& settings) {
    Outcome outcome;
    std::optional<Source> source = readChecked(file, Demand::structure, settings, outcome);
    if (!source) return outcome;
    Findings findings(kDefaultMaxErrors);
    if (!query.isPattern) warnOfSlashes(source->text(), query, findings);
    findings.append(outcome.diagnostics, source->name, settings, "");

    Answer answer(source->name, query);
    const std::string name = source->name;
    const Objects objects = query.isPattern ? readObjects(std::move(*source).takeText(), query.path)
                                            : readObject(source->text(), query.path);
    for (const std::string& what : answerFrom(objects, query, answer)) {
        outcome.raise(Status::findings);
        appendTrouble(outcome.diagnostics, name, "has no " + what, settings);
    }
    if (query.options.quiet) return {{}, {}, outcome.status};
    outcome.results = std::move(answer.text);
    return outcome;
}

Status run(const Options& options, const Settings& settings) {
    FilesAndPath arguments = splitFilesAndPath(options.arguments);
    const kiv::KDXPath path(arguments.path);
    if (path.numComponent() == 0) throw Trouble("the empty path names no object");
    const FileList list = listFiles(arguments.files, settings);
    Query query{path.getSubPath(0, path.numComponent()),
                isPattern(kiv::readPath(arguments.path)),
                std::move(arguments.rest),
                false,
                settings.json,
                options};
    query.isPlain =
        list.files.size() == 1 && !query.isPattern && query.names.size() < 2 && !options.withPlace;
    return workOnFiles(list, settings, [&](const std::string& file, std::size_t) {
        return getFrom(file, query, settings);
    });
}

}  // namespace

void addGet(Program& program) {
    Command command(program, "get", "Print the parameters of objects, or their values");
    Options& options = command.onRun(run);
    command.filesAndPath(options.arguments, "NAME",
                         "A parameter whose value to print; there may be several");
    command.text("--default VALUE", options.defaultValue, "What to print for a NAME not there");
    command.flag("-q,--quiet", options.quiet, "Print nothing: the exit status tells");
    command.flag("--with-place", options.withPlace, "Put FILE:LINE:COLUMN: in front of each value");
    command.flag("-z,--null", options.zero, "End each line with a NUL byte, not a line feed");
    command.footer(
        "PATH is the last argument that begins with '/'; behind it stand names, in front of it "
        "files.\n"
        "Where none does, the first argument is the file. In a PATH, * stands for any type or "
        "name,\n"
        "and ** for any number of levels. Of parameters that stand several times, the value that\n"
        "readers see is printed. With --json, several values come as one object a line, with "
        "file,\n"
        "line, column, path, name and value. The exit status is 1 when the object or a parameter "
        "is\n"
        "not there.\n\n"
        "Example:\n"
        "  gain=$(kdx get set-up.kdx /Sample:s1 gain)\n"
        "  kdx get --with-place configs/ '/Sample:*/**' gain");
}

}  // namespace kdx
