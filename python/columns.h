#ifndef ZEB5_PYTHON_COLUMNS_H
#define ZEB5_PYTHON_COLUMNS_H

#include <string>

#include <pybind11/pybind11.h>

#include "zeb5xml.hpp"

/// Returns a dict of columns: a list of texts, or of numbers, for each field of all channels, or of all their
/// "bits", "dims" or "stats", which begin with the columns of what they belong to. With `arrays`, numbers are
/// NumPy arrays of 32 bits.
pybind11::dict columns(const zeb5xml::channel_list &channels, const std::string &of, bool arrays);

#endif
