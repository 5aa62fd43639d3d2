#pragma once

#include <pybind11/pybind11.h>

#include <kiv/KDXText.h>

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>

namespace kdx {

namespace py = pybind11;

/// A Python error that has been set. py::error_already_set takes the GIL of the main interpreter
/// when it goes: in another interpreter, that would wait for ever.
struct ErrorIsSet {};

/// The bytes of a Python text: of a str in UTF-8, in which a byte that is no UTF-8 stands as the
/// surrogate that `surrogateescape` gives it, or of what has a buffer: bytes, memoryview, mmap.
///
/// Nothing is copied of a str in ASCII and of a buffer that cannot be written to. One that can is
/// copied, because other threads may do so while the GIL is released. To be made and destroyed with
/// the GIL held.
class Text {
public:
    /// @throws TypeError for what is no text.
    explicit Text(py::handle given);

    std::string_view view() const noexcept { return bytes; }

    /// Behind how many characters of a str, or bytes of a buffer, an offset in the bytes stands.
    std::size_t length(std::size_t begin, std::size_t end) const;

    /// The column, from 1, in the unit of length().
    std::size_t column(const kiv::KDXPlace& place) const;

    /// A text of the same type: str, or else bytes.
    py::object like(std::string_view text) const;

private:
    struct ReleaseBuffer {
        void operator()(Py_buffer* held) const;
    };

    void takeString(py::handle given);
    void takeBuffer(py::handle given);

    py::object owner;  // of the bytes, when they are Python's
    std::unique_ptr<Py_buffer, ReleaseBuffer> buffer;
    std::string copy;
    std::string_view bytes;
    bool isString = false;
    bool isEncoded = false;  // so that a character may be several bytes
};

/// A str of bytes, with surrogates in place of those that are no UTF-8.
py::str stringOf(std::string_view bytes);

}  // namespace kdx
