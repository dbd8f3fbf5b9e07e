#ifndef ZEB5_PYTHON_TEXTS_H
#define ZEB5_PYTHON_TEXTS_H

/// Texts of records as texts of Python. Bytes that are not UTF-8 become lone surrogates, as in names of
/// files, and come back as the same bytes.

#include <cstring>
#include <string>
#include <string_view>

#include <pybind11/pybind11.h>

namespace py = pybind11;

inline py::str to_python(std::string_view text) {
    PyObject *const made =
        PyUnicode_DecodeUTF8(text.data(), static_cast<Py_ssize_t>(text.size()), "surrogateescape");
    if (!made)
        throw py::error_already_set();
    return py::reinterpret_steal<py::str>(made);
}

inline std::string to_bytes(const py::str &text) {
    PyObject *const made = PyUnicode_AsEncodedString(text.ptr(), "utf-8", "surrogateescape");
    if (!made)
        throw py::error_already_set();
    return py::reinterpret_steal<py::bytes>(made);
}

/// The text of a field, which may fill it.
template <std::size_t Size> std::string_view text_of(const char (&field)[Size]) {
    return {field, strnlen(field, Size)};
}

/// Raises ValueError for a text that is longer than the field, or has a NUL.
template <std::size_t Size> void set_text(char (&field)[Size], const py::str &text) {
    const std::string bytes = to_bytes(text);
    if (bytes.size() >= Size)
        throw py::value_error("this text has " + std::to_string(bytes.size()) +
                              " bytes, and its field room for " + std::to_string(Size - 1));
    if (bytes.find('\0') != std::string::npos)
        throw py::value_error("this text has a NUL");
    std::memset(field, 0, Size);
    std::memcpy(field, bytes.data(), bytes.size());
}

#endif
