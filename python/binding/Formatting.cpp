#include <kiv/ExtractActionOrStateFromKDX.h>
#include <kiv/KDXFormatting.h>
#include <pybind11/pybind11.h>

#include <cstddef>
#include <string>
#include <utility>
#include <vector>

#include "Bindings.h"
#include "Text.h"

namespace kdx {
namespace {

namespace extraction = kiv::ExtractActionOrStateFromKDX;
using kiv::KDXFormatting::Style;

Style::Separators separatorsOf(const std::string& name) {
    if (name == "spaced") return Style::Separators::spaced;
    if (name == "tight") return Style::Separators::tight;
    if (name == "unchanged") return Style::Separators::unchanged;
    throw py::value_error("separators are 'spaced', 'tight' or 'unchanged', not '" + name + '\'');
}

Style::EndComments endCommentsOf(const std::string& name) {
    if (name == "unchanged") return Style::EndComments::unchanged;
    if (name == "added") return Style::EndComments::added;
    if (name == "removed") return Style::EndComments::removed;
    throw py::value_error("end comments are 'unchanged', 'added' or 'removed', not '" + name +
                          '\'');
}

py::object format(const py::object& given, std::size_t indentWidth, std::size_t deepestLevel,
                  std::size_t blankLines, const std::string& separators,
                  const std::string& endComments) {
    const Text text(given);
    const Style style{indentWidth, deepestLevel, blankLines, separatorsOf(separators),
                      endCommentsOf(endComments)};
    std::string formatted;
    {
        const py::gil_scoped_release released;
        formatted = kiv::KDXFormatting::formatKDX(text.view(), style);
    }
    return text.like(formatted);
}

py::list splitActions(const py::object& given) {
    const Text text(given);
    std::vector<std::pair<extraction::KDXLineType, std::string>> runs;
    {
        const py::gil_scoped_release released;
        runs = extraction::extractActionOrStateFromKDX(std::string(text.view()));
    }
    py::list list;
    for (const auto& [kind, run] : runs)
        list.append(
            py::make_tuple(kind == extraction::Action ? "action" : "state", text.like(run)));
    return list;
}

}  // namespace

void addFormatting(py::module_& module) {
    module.def("format", format, py::arg("text"), py::arg("indent_width"), py::arg("deepest_level"),
               py::arg("blank_lines"), py::arg("separators"), py::arg("end_comments"));
    module.def("split_actions", splitActions, py::arg("text"));
}

}  // namespace kdx
