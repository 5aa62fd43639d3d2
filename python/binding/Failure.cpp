#include "Failure.h"

#include <kiv/Error.h>

#include <exception>
#include <utility>

namespace kdx {
namespace {

py::object classOf(const char* name) {
    return py::module_::import("kdx._errors").attr(name);
}

template <typename... Arguments>
void setError(const char* name, const Arguments&... arguments) {
    const py::object type = classOf(name);
    PyErr_SetObject(type.ptr(), type(arguments...).ptr());
}

void translate(std::exception_ptr failure) {
    try {
        if (failure) std::rethrow_exception(std::move(failure));
    } catch (const ErrorIsSet&) {
        return;
    } catch (const kiv::data::error& refusal) {
        setError("KDXInvalidError", stringOf(refusal.message()));
    } catch (const kiv::Error& misuse) {
        setError("KDXUsageError", stringOf(misuse.message()));
    }
}

}  // namespace

void translateFailures() {
    py::register_local_exception_translator(translate);
}

void throwDecodeError(py::handle given, const Text& text, const kiv::KDXCheck::Problem& problem) {
    setError("KDXDecodeError", stringOf(problem.message), given,
             text.length(0, problem.begin.offset), problem.begin.line, text.column(problem.begin));
    throw ErrorIsSet();
}

void throwEncodeError(const std::string& message) {
    setError("KDXEncodeError", stringOf(message));
    throw ErrorIsSet();
}

}  // namespace kdx
