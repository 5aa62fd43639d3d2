#include "Edit.h"

#include <algorithm>
#include <set>
#include <unordered_map>
#include <utility>
#include <vector>

#include "maps/PathReader.h"
#include "text/ShownText.h"

namespace kdx {
namespace {

using kiv::KDXDocument;
using kiv::KDXSteps;
using kiv::MiniKDXParser;
using Node = KDXDocument::Node;
using Nodes = std::vector<Node>;
using Names = std::set<std::string>;

constexpr const char* kMerges =
    "would be one with what has that name there already; remove or rename that first";

std::string pathText(const KDXSteps& path) {
    std::string text;
    for (const kiv::KDXStep& step : path) {
        if (step.anyDepth)
            text += "/**";
        else
            kiv::appendLevel(text, step.type.value_or("*"), step.name.value_or("*"));
    }
    return text;
}

std::string textOf(const KDXSteps& path) {
    return shown(pathText(path));
}

bool isExact(const kiv::KDXStep& step) {
    return !step.anyDepth && step.type && step.name;
}

Nodes find(const KDXDocument& document, const Target& target) {
    return target.name ? document.findParameters(target.path, *target.name)
                       : document.findObjects(target.path);
}

bool isExactPath(const KDXSteps& path) {
    return std::all_of(path.begin(), path.end(), isExact);
}

/// Whether the path of an object that is not there is the text of another one's path, which has a
/// '/' in a name.
bool isPathOfAnother(const KDXDocument& document, const KDXSteps& steps) {
    const std::string wanted = pathText(steps);
    std::string path;
    std::vector<std::pair<Node, std::size_t>> open;  // objects, and where their paths end
    for (Node node = document.next(document.root()); node != Node::none;
         node = document.next(node)) {
        if (document.kind(node) != MiniKDXParser::lineObject) continue;
        while (!open.empty() && open.back().first != document.parent(node)) open.pop_back();
        path.resize(open.empty() ? 0 : open.back().second);
        kiv::appendLevel(path, document.first(node), document.second(node));
        if (path == wanted) return true;
        open.emplace_back(node, path.size());
    }
    return false;
}

[[noreturn]] void failNotThere(const Target& target) {
    if (!target.name) throw NotThere("has no object " + textOf(target.path));
    throw NotThere("has no parameter " + shownName(*target.name) + " in " + textOf(target.path));
}

Nodes findThere(const KDXDocument& document, const Target& target) {
    Nodes nodes = find(document, target);
    if (nodes.empty()) failNotThere(target);
    return nodes;
}

using Numbers = std::unordered_map<std::string, std::size_t>;

std::size_t numberOf(Numbers& numbers, std::string key) {
    return numbers.try_emplace(std::move(key), numbers.size() + 1).first->second;
}

/// The number for a path of one level more, which is more pieces than one with a '/' in the name:
/// paths of the same text get the same number.
std::size_t numberBelow(Numbers& numbers, std::size_t number, const std::string& level) {
    for (std::size_t begin = 0; begin < level.size();) {
        const std::size_t end = std::min(level.find('/', begin + 1), level.size());
        number = numberOf(numbers, std::to_string(number).append(level, begin, end - begin));
        begin = end;
    }
    return number;
}

using Seen = std::unordered_map<Node, std::size_t>;

/// A number for each object, and for each parameter with one of the names, the same for those that
/// readers take for one: objects by the text of the path, parameters of one by the name.
Seen whatIsSeen(const KDXDocument& document, const Names& names) {
    Numbers numbers;
    Seen seen{{document.root(), 0}};
    for (Node node = document.next(document.root()); node != Node::none;
         node = document.next(node)) {
        const bool isObject = document.kind(node) == MiniKDXParser::lineObject;
        if (!isObject && (names.empty() || document.kind(node) != MiniKDXParser::lineParameter))
            continue;
        const std::size_t parent = seen.at(document.parent(node));
        const std::string first = document.first(node);
        if (isObject) {
            std::string level;
            kiv::appendLevel(level, first, document.second(node));
            seen[node] = numberBelow(numbers, parent, level);
        } else if (names.count(first) != 0) {
            seen[node] = numberOf(numbers, std::to_string(parent) + '=' + first);
        }
    }
    return seen;
}

/// Makes a change after which readers must take nothing for one that was two before.
template <typename Change>
void changeUnmerged(const KDXDocument& document, const Names& names, const Change& change) {
    const Seen before = whatIsSeen(document, names);
    change();
    std::unordered_map<std::size_t, std::size_t> former;
    for (const auto& [node, number] : whatIsSeen(document, names)) {
        const std::size_t was = before.at(node);
        if (former.try_emplace(number, was).first->second != was) throw Trouble(kMerges);
    }
}

// ---- Set.

Node neighbourOf(const KDXDocument& document, const SetEdit& edit) {
    const Nodes parameters = document.findParameters(edit.path, edit.neighbour);
    if (!parameters.empty()) return parameters.front();
    const std::size_t typeEnd = std::min(edit.neighbour.find(':'), edit.neighbour.size());
    const std::string name = edit.neighbour.substr(std::min(typeEnd + 1, edit.neighbour.size()));
    KDXSteps path = edit.path;
    path.push_back({edit.neighbour.substr(0, typeEnd), name, false});
    const Nodes objects = document.findObjects(path);
    if (objects.empty()) failNotThere({edit.path, edit.neighbour});
    return objects.front();
}

KDXDocument::Where whereToAdd(const KDXDocument& document, const SetEdit& edit, Node object) {
    switch (edit.side) {
        case SetEdit::Side::usual: break;
        case SetEdit::Side::first: return KDXDocument::firstIn(object);
        case SetEdit::Side::before: return KDXDocument::before(neighbourOf(document, edit));
        case SetEdit::Side::after: return KDXDocument::behind(neighbourOf(document, edit));
    }
    return KDXDocument::lastIn(object);
}

void requireOneObject(const KDXSteps& path) {
    if (!isExactPath(path)) throw Trouble("a pattern names no single object: " + textOf(path));
}

void apply(KDXDocument& document, const SetEdit& edit) {
    requireOneObject(edit.path);
    if (document.findObjects(edit.path).empty() && isPathOfAnother(document, edit.path))
        throw Trouble(kMerges);
    const bool isUsual = edit.side == SetEdit::Side::usual;
    const bool isChanged = isUsual || !document.findParameters(edit.path, edit.name).empty();
    const Nodes objects = isChanged ? Nodes() : document.findObjects(edit.path);
    const bool isMade =
        objects.empty() && edit.side != SetEdit::Side::before && edit.side != SetEdit::Side::after;
    if (isChanged || isMade) {
        document.set(edit.path, edit.name, edit.value);
        return;
    }
    if (objects.empty()) failNotThere({edit.path, std::nullopt});
    document.addParameter(whereToAdd(document, edit, objects.front()), edit.name, edit.value);
}

// ---- Unset.

void apply(KDXDocument& document, const UnsetEdit& edit) {
    const auto& [path, name] = edit.target;
    const std::size_t count =
        name ? document.removeParameters(path, *name) : document.removeObjects(path);
    if (count == 0) failNotThere(edit.target);
}

// ---- Rename.

void apply(KDXDocument& document, const RenameEdit& edit) {
    for (const Node node : findThere(document, edit.target)) {
        if (edit.type) document.setType(node, *edit.type);
        if (edit.name) document.setName(node, *edit.name);
    }
}

void addNames(Names& names, const RenameEdit& edit) {
    if (edit.target.name) names.insert({*edit.target.name, *edit.name});
}

// ---- Move.

KDXDocument::Where whereToMove(const KDXDocument& document, const MoveEdit& edit) {
    const Nodes places = findThere(document, {edit.place, std::nullopt});
    switch (edit.side) {
        case MoveEdit::Side::into: break;
        case MoveEdit::Side::firstInto: return KDXDocument::firstIn(places.front());
        case MoveEdit::Side::before: return KDXDocument::before(places.front());
        case MoveEdit::Side::after: return KDXDocument::behind(places.back());
    }
    return KDXDocument::lastIn(places.front());
}

void apply(KDXDocument& document, const MoveEdit& edit) {
    requireOneObject(edit.place);
    const bool isBeside = edit.side == MoveEdit::Side::before || edit.side == MoveEdit::Side::after;
    if (edit.target.name && edit.place.size() == (isBeside ? 1 : 0))
        throw Trouble("a parameter stands in an object, not at the top level");
    const Nodes nodes = findThere(document, edit.target);
    KDXDocument::Where where = whereToMove(document, edit);
    for (const Node node : nodes) {
        document.move(node, where);
        where = KDXDocument::behind(node);
    }
}

void addNames(Names& names, const MoveEdit& edit) {
    if (edit.target.name) names.insert(*edit.target.name);
}

/// Of an edit that cannot make one of two.
template <typename Change>
void addNames(Names& /*names*/, const Change& /*edit*/) {}

// ---- Lists.

void apply(KDXDocument& document, const Edit& edit) {
    std::visit([&](const auto& change) { apply(document, change); }, edit.change);
}

void addNames(Names& names, const Edit& edit) {
    std::visit([&](const auto& change) { addNames(names, change); }, edit.change);
}

bool mayMerge(const Edit& edit) {
    return std::holds_alternative<RenameEdit>(edit.change) ||
           std::holds_alternative<MoveEdit>(edit.change);
}

/// The first edit to give each path as text.
class PathEdits {
public:
    explicit PathEdits(const std::vector<Edit>& edits) {
        for (const Edit& edit : edits)
            for (const KDXSteps& path : edit.textPaths)
                if (isExactPath(path)) add(pathText(path), edit);
    }

    const Edit* find(const std::string& path) const {
        if (path.size() > longest) return nullptr;  // without a look at all of it
        const auto found = first.find(path);
        return found == first.end() ? nullptr : found->second;
    }

private:
    void add(const std::string& path, const Edit& edit) {
        longest = std::max(longest, path.size());
        first.try_emplace(path, &edit);
    }

    std::unordered_map<std::string, const Edit*> first;
    std::size_t longest = 0;
};

/// Whether the innermost object or one around it has a '/' in its name: its path has more levels.
bool hasSlashInName(const PathReader& paths) {
    const auto slashes = std::count(paths.path().begin(), paths.path().end(), '/');
    return static_cast<std::size_t>(slashes) > paths.statement().depth() + 1;
}

Target targetOf(const SetEdit& edit) {
    return {edit.path, edit.name};
}

template <typename Change>
Target targetOf(const Change& edit) {
    return edit.target;
}

Target targetOf(const Edit& edit) {
    return std::visit([](const auto& change) { return targetOf(change); }, edit.change);
}

}  // namespace

const Edit* findAmbiguous(std::string_view text, const std::vector<Edit>& edits) {
    const PathEdits wanted(edits);
    const bool hasSlashes = text.find('/') != std::string_view::npos;
    const Edit* found = nullptr;
    PathReader paths(text);
    while (hasSlashes && paths.next()) {
        if (paths.statement().kind() != MiniKDXParser::lineObject) continue;
        const Edit* edit = wanted.find(paths.path());
        const bool isFirst = edit != nullptr && (found == nullptr || edit < found);
        if (isFirst && hasSlashInName(paths)) found = edit;
    }
    return found;
}

KDXSteps readObjectPath(const std::string& path) {
    if (path.empty()) throw Trouble("the empty path names no object");
    return kiv::readPath(path);
}

void applyEdits(KDXDocument& document, const std::vector<Edit>& edits) {
    for (auto edit = edits.begin(); edit != edits.end();) {
        const auto behind = std::find_if_not(edit, edits.end(), mayMerge);
        if (edit == behind) {
            apply(document, *edit++);
            continue;
        }
        Names names;
        for (auto merging = edit; merging != behind; ++merging) addNames(names, *merging);
        changeUnmerged(document, names, [&] {
            for (; edit != behind; ++edit) apply(document, *edit);
        });
    }
}

std::optional<KDXSteps> commonPath(const std::vector<Edit>& edits) {
    if (edits.empty()) return std::nullopt;
    const auto& first = edits.front().change;
    if (!std::holds_alternative<SetEdit>(first) && !std::holds_alternative<UnsetEdit>(first))
        return std::nullopt;
    const KDXSteps path = targetOf(edits.front()).path;
    const auto isAlike = [&](const Edit& edit) {
        return edit.change.index() == first.index() &&
               pathText(targetOf(edit).path) == pathText(path);
    };
    return std::all_of(edits.begin(), edits.end(), isAlike) ? std::make_optional(path)
                                                            : std::nullopt;
}

Node changedBy(const KDXDocument& document, const Edit& edit) {
    const Target target = targetOf(edit);
    Nodes nodes = find(document, target);
    if (nodes.empty()) nodes = document.findObjects(target.path);
    return nodes.empty() || nodes.front() == document.root() ? Node::none : nodes.front();
}

}  // namespace kdx
