#include <charconv>

#include "Features.h"
#include "Nodes.h"
#include "text/ShownText.h"

namespace kdx::lsp {
namespace {

constexpr std::size_t kMaxPlaces = 5;

std::string lineOf(const Tree& tree, Node node) {
    return std::to_string(tree.placeOf(node).line);
}

/// "line 3", "lines 3, 5 and 7 more", of all but one.
std::string lineNumbers(const Tree& tree, const std::vector<Node>& nodes, Node without) {
    std::string text;
    std::size_t count = 0;
    for (const Node node : nodes) {
        if (node == without || ++count > kMaxPlaces) continue;
        text.append(text.empty() ? " " : ", ").append(lineOf(tree, node));
    }
    if (count > kMaxPlaces)
        text.append(" and ").append(std::to_string(count - kMaxPlaces)).append(" more");
    return (count == 1 ? "line" : "lines") + text;
}

/// A number, and behind it what may be its unit: "450 [nm]".
std::string quantity(std::string_view value) {
    double number = 0;
    const char* const valueEnd = value.data() + value.size();
    const auto [end, error] = std::from_chars(value.data(), valueEnd, number);
    const std::string_view text(value.data(), static_cast<std::size_t>(end - value.data()));
    if (error != std::errc()) return "";
    if (end == valueEnd) return "The number " + std::string(text) + '\n';
    if (value.back() != ']' || value.substr(text.size(), 2) != " [") return "";
    const std::string_view unit = value.substr(text.size() + 2);
    return "The number " + std::string(text) + ", unit " +
           std::string(unit.substr(0, unit.size() - 1)) + '\n';
}

/// What comes of several parameters of one name in the same object.
std::string winner(const Tree& tree, Node node, const std::vector<Node>& same) {
    if (same.size() == 1) return "";
    if (same.front() != node)
        return "Not seen by readers: line " + lineOf(tree, same.front()) + " comes first\n";
    return "Readers see this one, not that of " + lineNumbers(tree, same, node) + '\n';
}

std::string aboutParameter(const Tree& tree, Node node) {
    const std::string name = tree.first(node);
    std::string text = pathTextOf(tree, tree.parent(node)) + ", " + shownName(name) + '\n';
    text += quantity(tree.second(node)) + winner(tree, node, sameAs(tree, node));
    const std::vector<Node> named = tree.findParameters(kiv::readPath("**"), name);
    if (named.size() > 1)
        text += "The name stands also in " + lineNumbers(tree, named, node) + '\n';
    return text;
}

std::string aboutObject(const Tree& tree, Node node) {
    std::string text = pathTextOf(tree, node) + '\n';
    const std::vector<Node> same = sameAs(tree, node);
    if (same.size() > 1)
        text +=
            "Readers take it for one object with that of " + lineNumbers(tree, same, node) + '\n';
    kiv::KDXSteps anywhere = kiv::readPath("**");
    anywhere.push_back({tree.first(node), std::nullopt, false});
    const std::vector<Node> typed = tree.findObjects(anywhere);
    if (typed.size() > 1)
        text += "The type stands also in " + lineNumbers(tree, typed, node) + '\n';
    return text;
}

}  // namespace

Json hover(const Documents& documents, const Json& params) {
    const Cursor cursor = cursorOf(documents, params);
    const Node node = subjectOf(cursor.tree, cursor.node);
    const bool aboutOne = isObject(cursor.tree, node);
    if (!aboutOne && !isParameter(cursor.tree, node)) return nullptr;
    std::string text =
        aboutOne ? aboutObject(cursor.tree, node) : aboutParameter(cursor.tree, node);
    text.pop_back();
    return {{"contents", {{"kind", "plaintext"}, {"value", text}}},
            {"range", location(cursor, cursor.node)["range"]}};
}

}  // namespace kdx::lsp
