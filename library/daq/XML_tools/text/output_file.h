#ifndef ZEB5_OUTPUT_FILE_H
#define ZEB5_OUTPUT_FILE_H

/// The file that a writer fills.

#include <cstdio>
#include <memory>

namespace zeb5 {

struct file_close {
    // A failed write to the file is reported neither here nor where it happens: the writers report only a
    // file that they cannot open and a failed write to the descriptor
    void operator()(FILE *file) const { std::fclose(file); }
};
using output_file = std::unique_ptr<FILE, file_close>;

/// Opens a file and truncates it. Returns null after a report in the name of `writer`, on standard output and
/// standard error. The file never gets the descriptor of a standard stream that is closed: messages would end
/// up in it.
output_file open_output(const char *writer, const char *name);

} // namespace zeb5

#endif
