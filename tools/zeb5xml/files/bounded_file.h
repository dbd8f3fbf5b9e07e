#ifndef ZEB5XML_BOUNDED_FILE_H
#define ZEB5XML_BOUNDED_FILE_H

#include <cstddef>
#include <string>

/// Reads a file of any kind, "-" being standard input. Returns why that failed, or an empty text. It fails
/// when there are more than `most` bytes, as a device may have no end.
std::string read_bounded(const std::string &path, std::size_t most, std::string &bytes);

#endif
