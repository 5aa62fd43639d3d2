#include <kiv/KDXDocument.h>
#include <kiv/KDXPath.h>
#include <pybind11/pybind11.h>
#include <pybind11/stl.h>

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "Bindings.h"
#include "Text.h"

namespace kdx {
namespace {

using kiv::KDXDocument;
using kiv::MiniKDXParser;
using Node = KDXDocument::Node;
using Number = std::uint64_t;  // of a node

Number numberOf(Node node) {
    return static_cast<Number>(node);
}

Node nodeOf(Number number) {
    return static_cast<Node>(number);
}

KDXDocument load(const py::object& given) {
    const Text text(given);
    std::string copy(text.view());
    const py::gil_scoped_release released;
    return KDXDocument(std::move(copy));
}

/// It keeps the GIL, so that no other thread changes the document meanwhile: the bytes are copied,
/// and nothing is read.
py::bytes textOf(const KDXDocument& document) {
    return document.text();
}

/// The objects as (path, node), in the order of the text.
std::vector<std::pair<std::string, Number>> objectsOf(const KDXDocument& document) {
    std::vector<std::pair<std::string, Number>> objects;
    std::vector<std::pair<Node, std::size_t>> open{
        {document.root(), 0}};  // and their path's length
    std::string path;
    for (Node node = document.next(document.root()); node != Node::none;
         node = document.next(node)) {
        if (document.kind(node) != MiniKDXParser::lineObject) continue;
        while (open.back().first != document.parent(node)) open.pop_back();
        path.resize(open.back().second);
        kiv::appendLevel(path, document.first(node), document.second(node));
        open.emplace_back(node, path.size());
        objects.emplace_back(path, numberOf(node));
    }
    return objects;
}

py::list listObjects(const KDXDocument& document) {
    py::list list;
    for (const auto& [path, node] : objectsOf(document))
        list.append(py::make_tuple(stringOf(path), node));
    return list;
}

/// The parameters of an object as (name, node), in the order of the text.
py::list listParameters(const KDXDocument& document, Number object) {
    py::list list;
    for (Node node = document.firstChild(nodeOf(object)); node != Node::none;
         node = document.nextSibling(node))
        if (document.kind(node) == MiniKDXParser::lineParameter)
            list.append(py::make_tuple(stringOf(document.first(node)), numberOf(node)));
    return list;
}

std::vector<Number> find(const KDXDocument& document, const py::object& pattern) {
    std::vector<Number> numbers;
    for (const Node node : document.findObjects(kiv::readPath(Text(pattern).view())))
        numbers.push_back(numberOf(node));
    return numbers;
}

Number addObject(KDXDocument& document, Number parent, const py::object& type,
                 const py::object& name) {
    const auto where = KDXDocument::lastIn(nodeOf(parent));
    return numberOf(document.addObject(where, Text(type).view(), Text(name).view()));
}

Number addParameter(KDXDocument& document, Number object, const py::object& name,
                    const py::object& value) {
    const auto where = KDXDocument::lastIn(nodeOf(object));
    return numberOf(document.addParameter(where, Text(name).view(), Text(value).view()));
}

/// The types and names on the way to an object: one that goes by its type has no name.
py::list stepsOf(const py::object& given) {
    const kiv::KDXPath path(std::string(Text(given).view()));
    py::list steps;
    for (std::size_t i = 0; i < path.numComponent(); ++i) {
        const bool isNamed = path.getName(i) != path.getType(i);
        steps.append(py::make_tuple(stringOf(path.getType(i)),
                                    stringOf(isNamed ? path.getName(i) : std::string())));
    }
    return steps;
}

py::str join(const py::object& around, const py::object& type, const py::object& name) {
    std::string path(Text(around).view());
    kiv::appendLevel(path, Text(type).view(), Text(name).view());
    return stringOf(path);
}

}  // namespace

void addDocuments(py::module_& module) {
    py::class_<KDXDocument>(module, "Document")
        .def(py::init(&load))
        .def("text", &textOf)
        .def("root", [](const KDXDocument& document) { return numberOf(document.root()); })
        .def("contains", [](const KDXDocument& document,
                            Number node) { return document.contains(nodeOf(node)); })
        .def("objects", &listObjects)
        .def("parameters", &listParameters)
        .def("find", &find)
        .def("first", [](const KDXDocument& document,
                         Number node) { return stringOf(document.first(nodeOf(node))); })
        .def("second", [](const KDXDocument& document,
                          Number node) { return stringOf(document.second(nodeOf(node))); })
        .def("comment", [](const KDXDocument& document,
                           Number node) { return stringOf(document.comment(nodeOf(node))); })
        .def("set_value",
             [](KDXDocument& document, Number node, const py::object& value) {
                 document.setValue(nodeOf(node), Text(value).view());
             })
        .def("set_comment",
             [](KDXDocument& document, Number node, const py::object& comment) {
                 document.setComment(nodeOf(node), Text(comment).view());
             })
        .def("add_object", &addObject)
        .def("add_parameter", &addParameter)
        .def("remove", [](KDXDocument& document, Number node) { document.remove(nodeOf(node)); })
        .def("__reduce__", &refusePickling);
    module.def("path_steps", stepsOf);
    module.def("join_path", join);
}

}  // namespace kdx
