#include <string>

#include "Bindings.h"
#include "Failure.h"

namespace kdx {

void refusePickling(const pybind11::object& instance) {
    const std::string type = Py_TYPE(instance.ptr())->tp_name;
    throw pybind11::type_error("cannot pickle '" + type + "' object");
}

}  // namespace kdx

PYBIND11_MODULE(_core, module) {
    module.doc() = "What the package kdx has of the library. Not to be used directly.";
    kdx::translateFailures();
    kdx::addBuilders(module);
    kdx::addChecks(module);
    kdx::addDocuments(module);
    kdx::addFormatting(module);
    kdx::addMaps(module);
    kdx::addSearches(module);
    kdx::addStatements(module);
}
