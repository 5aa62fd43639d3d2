#include <kiv/KDXReader.h>
#include <pybind11/pybind11.h>

#include "Bindings.h"
#include "KindName.h"
#include "Text.h"

namespace kdx {
namespace {

/// Goes through the statements of a text, which it holds. It keeps the GIL: the work between two
/// statements is too little to give it away.
class StatementIterator {
public:
    explicit StatementIterator(const py::object& given) : text(given), reader(text.view()) {}

    /// The fields of kdx.Statement.
    py::tuple next() {
        if (!reader.next()) throw py::stop_iteration();
        const kiv::KDXPlace place = reader.place();
        return py::make_tuple(kindName(reader.kind()), stringOf(reader.first()),
                              stringOf(reader.second()), stringOf(reader.comment()),
                              stringOf(reader.text()), place.line, text.column(place),
                              reader.depth(), stringOf(reader.source()));
    }

private:
    Text text;
    kiv::KDXReader reader;
};

}  // namespace

void addStatements(py::module_& module) {
    py::class_<StatementIterator>(module, "StatementIterator")
        .def(py::init<const py::object&>(), py::arg("text"))
        .def("__iter__", [](py::object self) { return self; })
        .def("__next__", &StatementIterator::next)
        .def("__reduce__", &refusePickling);
}

}  // namespace kdx
