#include "Bindings.h"
#include "Failure.h"

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
