#include <kiv/ActionBuilder.h>
#include <kiv/CleanKDXParamString.h>
#include <kiv/KDXBuilder.h>
#include <pybind11/pybind11.h>
#include <pybind11/stl.h>

#include <string>
#include <vector>

#include "Bindings.h"
#include "Text.h"

namespace kdx {
namespace {

using kiv::ActionBuilder;
using kiv::KDXBuilder;

std::string bytesOf(py::handle text) {
    return std::string(Text(text).view());
}

std::vector<std::string> listOf(const py::sequence& texts) {
    std::vector<std::string> list;
    for (const py::handle text : texts) list.push_back(bytesOf(text));
    return list;
}

void addDocumentBuilder(py::module_& module) {
    py::class_<KDXBuilder>(module, "Builder")
        .def(py::init<>())
        .def("push_object",
             [](KDXBuilder& builder, const py::object& type, const py::object& name) {
                 builder.pushObject(bytesOf(type), bytesOf(name));
             })
        .def("push_object",
             [](KDXBuilder& builder, const py::object& type) { builder.pushObject(bytesOf(type)); })
        .def("push_replaced_object",
             [](KDXBuilder& builder, const py::object& type, const py::object& name) {
                 builder.pushReplacedObject(bytesOf(type), bytesOf(name));
             })
        .def("push_replaced_object",
             [](KDXBuilder& builder, const py::object& type) {
                 builder.pushReplacedObject(bytesOf(type));
             })
        .def("push_root",
             [](KDXBuilder& builder, const py::object& path) { builder.pushRoot(bytesOf(path)); })
        .def("pop_object", &KDXBuilder::popObject)
        .def("pop_all", &KDXBuilder::popAll)
        .def("add_text",
             [](KDXBuilder& builder, const py::object& name, const py::object& value) {
                 builder.addParam(bytesOf(name), bytesOf(value));
             })
        .def("add_texts",
             [](KDXBuilder& builder, const py::object& name, const py::sequence& values) {
                 builder.addParam(bytesOf(name), listOf(values));
             })
        .def("add_number",
             [](KDXBuilder& builder, const py::object& name, double value, const py::object& unit) {
                 builder.addParam(bytesOf(name), value, bytesOf(unit));
             })
        .def("add_action",
             [](KDXBuilder& builder, const py::object& action, const py::sequence& parameters) {
                 builder.addAction(bytesOf(action), listOf(parameters));
             })
        .def("add_action",
             [](KDXBuilder& builder, const ActionBuilder& action) { builder.addAction(action); })
        .def("text", [](const KDXBuilder& builder) { return stringOf(builder.getKDX()); })
        .def("__reduce__", &refusePickling);
}

void addActionBuilder(py::module_& module) {
    py::class_<ActionBuilder>(module, "ActionBuilder")
        .def(py::init([](const py::object& action) { return ActionBuilder(bytesOf(action)); }))
        .def("add_param",
             [](ActionBuilder& builder, const py::object& name, const py::object& value) {
                 builder.addParam(bytesOf(name), bytesOf(value));
             })
        .def("add_param", [](ActionBuilder& builder,
                             const py::object& value) { builder.addParam(bytesOf(value)); })
        .def("text", [](const ActionBuilder& builder) { return stringOf(builder.getKDX()); })
        .def("__reduce__", &refusePickling);
}

}  // namespace

void addBuilders(py::module_& module) {
    addActionBuilder(module);
    addDocumentBuilder(module);
    module.def("clean_value", [](const py::object& value) {
        return stringOf(kiv::CleanKDXParamString(bytesOf(value)).str());
    });
}

}  // namespace kdx
