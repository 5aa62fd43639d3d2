#include "Text.h"

namespace kdx {
namespace {

constexpr const char* kEscape = "surrogateescape";

py::object owned(PyObject* made) {
    if (made == nullptr) throw ErrorIsSet();
    return py::reinterpret_steal<py::object>(made);
}

}  // namespace

py::str stringOf(std::string_view bytes) {
    const auto size = static_cast<Py_ssize_t>(bytes.size());
    return owned(PyUnicode_DecodeUTF8(bytes.data(), size, kEscape));
}

void Text::ReleaseBuffer::operator()(Py_buffer* held) const {
    PyBuffer_Release(held);
    delete held;
}

Text::Text(py::handle given) {
    if (PyUnicode_Check(given.ptr()) != 0) {
        takeString(given);
    } else if (PyObject_CheckBuffer(given.ptr()) != 0) {
        takeBuffer(given);
    } else {
        const std::string type = Py_TYPE(given.ptr())->tp_name;
        throw py::type_error("a text is a str or holds bytes; this is of type " + type);
    }
}

void Text::takeString(py::handle given) {
    isString = true;
    if (PyUnicode_IS_READY(given.ptr()) && PyUnicode_IS_COMPACT_ASCII(given.ptr())) {
        owner = py::reinterpret_borrow<py::object>(given);
        bytes = {static_cast<const char*>(PyUnicode_DATA(given.ptr())),
                 static_cast<std::size_t>(PyUnicode_GET_LENGTH(given.ptr()))};
        return;
    }
    isEncoded = true;
    owner = owned(PyUnicode_AsEncodedString(given.ptr(), "utf-8", kEscape));
    bytes = {PyBytes_AS_STRING(owner.ptr()),
             static_cast<std::size_t>(PyBytes_GET_SIZE(owner.ptr()))};
}

void Text::takeBuffer(py::handle given) {
    auto wanted = std::make_unique<Py_buffer>();
    if (PyObject_GetBuffer(given.ptr(), wanted.get(), PyBUF_SIMPLE) != 0) throw ErrorIsSet();
    buffer.reset(wanted.release());
    bytes = {static_cast<const char*>(buffer->buf), static_cast<std::size_t>(buffer->len)};
    if (buffer->readonly != 0) return;
    copy = bytes;
    bytes = copy;
    buffer.reset();
}

std::size_t Text::length(std::size_t begin, std::size_t end) const {
    if (!isEncoded) return end - begin;
    return py::len(stringOf(bytes.substr(begin, end - begin)));
}

std::size_t Text::column(const kiv::KDXPlace& place) const {
    return length(place.offset - (place.column - 1), place.offset) + 1;
}

py::object Text::like(std::string_view text) const {
    if (isString) return stringOf(text);
    return py::bytes(text.data(), text.size());
}

}  // namespace kdx
