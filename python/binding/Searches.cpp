#include <kiv/ObjectKDXParser.h>
#include <kiv/StringUtilities.h>
#include <pybind11/pybind11.h>

#include <string>
#include <vector>

#include "Bindings.h"
#include "Text.h"

namespace kdx {
namespace {

std::string joined(const std::vector<std::string>& lines) {
    std::string text;
    for (const std::string& line : lines) text.append(line).append(1, '\n');
    return text;
}

kiv::ObjectKDXParser parserOf(const Text& text) {
    const std::string copy(text.view());
    return kiv::ObjectKDXParser(kiv::StringUtilities::stringToVector(copy, '\n'));
}

py::object find(const py::object& given, const py::object& name, int depth) {
    const Text text(given);
    const std::string wanted(Text(name).view());
    std::string found;
    {
        const py::gil_scoped_release released;
        kiv::ObjectKDXParser parser = parserOf(text);
        parser.parseForObject(wanted, depth);
        found = joined(parser.getResults());
    }
    return text.like(found);
}

py::dict findByType(const py::object& given, const py::object& type, int depth,
                    const py::object& groupType) {
    const Text text(given);
    const std::string wanted(Text(type).view());
    const std::string group(Text(groupType).view());
    std::map<std::string, std::vector<std::string>> found;
    {
        const py::gil_scoped_release released;
        kiv::ObjectKDXParser parser = parserOf(text);
        parser.parseForObjectsByType(wanted, depth, group);
        found.swap(parser.getTypeResults());
    }
    py::dict texts;
    for (const auto& [key, lines] : found) texts[stringOf(key)] = text.like(joined(lines));
    return texts;
}

}  // namespace

void addSearches(py::module_& module) {
    module.def("find", find, py::arg("text"), py::arg("name"), py::arg("depth"));
    module.def("find_by_type", findByType, py::arg("text"), py::arg("type"), py::arg("depth"),
               py::arg("group_type"));
}

}  // namespace kdx
