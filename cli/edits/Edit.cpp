#include "Edit.h"

#include <algorithm>
#include <vector>

#include "text/ShownText.h"

namespace kdx {
namespace {

using kiv::KDXDocument;
using kiv::KDXSteps;
using Node = KDXDocument::Node;
using Nodes = std::vector<Node>;

constexpr const char* kMerges =
    "would be one with what has that name there already; remove or rename that first";

std::string textOf(const kiv::KDXStep& step) {
    if (step.anyDepth) return "/**";
    const std::string type = step.type.value_or("*");
    const std::string name = step.name.value_or("*");
    return '/' + type + (name.empty() || name == type ? "" : ':' + name);
}

std::string textOf(const KDXSteps& path) {
    std::string text;
    for (const kiv::KDXStep& step : path) text += textOf(step);
    return shown(text);
}

bool isExact(const kiv::KDXStep& step) {
    return !step.anyDepth && step.type && step.name;
}

Nodes find(const KDXDocument& document, const Target& target) {
    return target.name ? document.findParameters(target.path, *target.name)
                       : document.findObjects(target.path);
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

/// To readers, objects of the same path are one, and of parameters of a name the first alone
/// counts.
void requireNoMore(const KDXDocument& document, const Target& target, std::size_t count) {
    if (find(document, target).size() > count) throw Trouble(kMerges);
}

KDXSteps joined(KDXSteps path, const KDXSteps& behind) {
    path.insert(path.end(), behind.begin(), behind.end());
    return path;
}

// ---- Set.

Node neighbourOf(const KDXDocument& document, const SetEdit& edit) {
    const Nodes parameters = document.findParameters(edit.path, edit.neighbour);
    if (!parameters.empty()) return parameters.front();
    const KDXSteps step = kiv::readPath('/' + edit.neighbour);
    const Nodes objects = document.findObjects(joined(edit.path, step));
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
    if (!std::all_of(path.begin(), path.end(), isExact))
        throw Trouble("a pattern names no single object: " + textOf(path));
}

void apply(KDXDocument& document, const SetEdit& edit) {
    requireOneObject(edit.path);
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

Target renamed(const RenameEdit& edit) {
    if (edit.target.name) return {edit.target.path, edit.name};
    KDXSteps path = edit.target.path;
    if (edit.type) path.back().type = edit.type;
    if (edit.name) path.back().name = edit.name;
    return {path, std::nullopt};
}

void apply(KDXDocument& document, const RenameEdit& edit) {
    const Nodes nodes = findThere(document, edit.target);
    for (const Node node : nodes) {
        if (edit.type) document.setType(node, *edit.type);
        if (edit.name) document.setName(node, *edit.name);
    }
    if (!edit.target.path.back().anyDepth) requireNoMore(document, renamed(edit), nodes.size());
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

Target moved(const MoveEdit& edit) {
    KDXSteps path = edit.place;
    if (edit.side == MoveEdit::Side::before || edit.side == MoveEdit::Side::after) path.pop_back();
    if (edit.target.name) return {path, edit.target.name};
    path.push_back(edit.target.path.back());
    return {path, std::nullopt};
}

void apply(KDXDocument& document, const MoveEdit& edit) {
    const Nodes nodes = findThere(document, edit.target);
    KDXDocument::Where where = whereToMove(document, edit);
    for (const Node node : nodes) {
        document.move(node, where);
        where = KDXDocument::behind(node);
    }
    if (edit.target.name || isExact(edit.target.path.back()))
        requireNoMore(document, moved(edit), nodes.size());
}

Target targetOf(const SetEdit& edit) {
    return {edit.path, edit.name};
}

template <typename Change>
Target targetOf(const Change& edit) {
    return edit.target;
}

}  // namespace

KDXSteps readObjectPath(const std::string& path) {
    if (path.empty()) throw Trouble("the empty path names no object");
    return kiv::readPath(path);
}

void applyEdit(KDXDocument& document, const Edit& edit) {
    std::visit([&](const auto& change) { apply(document, change); }, edit.change);
}

Node changedBy(const KDXDocument& document, const Edit& edit) {
    const Target target =
        std::visit([](const auto& change) { return targetOf(change); }, edit.change);
    Nodes nodes = find(document, target);
    if (nodes.empty()) nodes = document.findObjects(target.path);
    return nodes.empty() || nodes.front() == document.root() ? Node::none : nodes.front();
}

}  // namespace kdx
