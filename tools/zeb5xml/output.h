#ifndef ZEB5XML_OUTPUT_H
#define ZEB5XML_OUTPUT_H

#include <string>

/// The reader of our standard output has gone: nothing more to say to anybody.
struct closed_pipe {};

/// Writes all of `text` to a descriptor; `name` is what a failure calls it.
void write_all(int fd, const std::string &text, const std::string &name);

void write_standard_output(const std::string &text);

/// Closes standard output, which some file systems use to report a failed write.
void close_standard_output();

/// Writes `text` to the file at `path`, "-" being standard output. A regular file is replaced in one move, by
/// a complete new one; a device or a pipe that exists is written straight to.
void write_output(const std::string &path, const std::string &text);

#endif
