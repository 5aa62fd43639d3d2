#pragma once

#include <pybind11/pybind11.h>

namespace kdx {

/// Refuses to copy or pickle what is in C++. Python's own way with old protocols would end the
/// process, because it makes an instance of a class without a C++ type.
void refusePickling(const pybind11::object& instance);

// Each adds one group of the library to the module.
void addBuilders(pybind11::module_& module);
void addChecks(pybind11::module_& module);
void addDocuments(pybind11::module_& module);
void addFormatting(pybind11::module_& module);
void addMaps(pybind11::module_& module);
void addSearches(pybind11::module_& module);
void addStatements(pybind11::module_& module);

}  // namespace kdx
