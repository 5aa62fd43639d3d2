#include <kiv/KDXCheck.h>
#include <pybind11/pybind11.h>
#include <pybind11/stl.h>

#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "Bindings.h"
#include "Text.h"

namespace kdx {
namespace {

using kiv::KDXCheck::Problem;
using kiv::KDXCheck::Severity;

const char* severityName(Severity severity) {
    switch (severity) {
        case Severity::error: return "error";
        case Severity::warning: return "warning";
    }
    return "";
}

/// The fields of kdx.Problem.
py::tuple fieldsOf(const Problem& problem, const Text& text) {
    const py::object fix = problem.fix ? py::object(stringOf(problem.fix->title)) : py::none();
    return py::make_tuple(stringOf(problem.rule), severityName(problem.severity),
                          stringOf(problem.message), problem.begin.line, text.column(problem.begin),
                          problem.end.line, text.column(problem.end), fix);
}

py::list check(const py::object& given, bool warnings, std::vector<std::string> rules,
               std::optional<std::size_t> maxDepth, std::optional<std::size_t> maxProblems) {
    const Text text(given);
    const kiv::KDXCheck::Options options{warnings, std::move(rules),
                                         maxDepth.value_or(kiv::KDXCheck::kUnlimited),
                                         maxProblems.value_or(kiv::KDXCheck::kUnlimited)};
    kiv::KDXCheck::Report report;
    {
        const py::gil_scoped_release released;
        report = kiv::KDXCheck::check(text.view(), options);
    }
    py::list problems;
    for (const Problem& problem : report.problems) problems.append(fieldsOf(problem, text));
    return problems;
}

/// Of each rule the name, the severity and the explanation.
py::list rules() {
    py::list all;
    for (const kiv::KDXCheck::Rule& rule : kiv::KDXCheck::rules())
        all.append(py::make_tuple(stringOf(rule.name), severityName(rule.severity),
                                  stringOf(rule.explanation)));
    return all;
}

}  // namespace

void addChecks(py::module_& module) {
    module.def("check", check, py::arg("text"), py::arg("warnings"), py::arg("rules"),
               py::arg("max_depth"), py::arg("max_problems"));
    module.def("rules", rules);
}

}  // namespace kdx
