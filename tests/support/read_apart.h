#ifndef READ_APART_H
#define READ_APART_H

/// Readings in processes of their own, which are measured. The program replaces the functions that open files
/// and connections, and counts their calls.

#include <functional>
#include <ostream>
#include <string>

#include "support/every_reader.h"

enum ending { READ, REFUSED, THROWN, OPENED_OTHERS, CRASHED };

struct cost {
    ending end = CRASHED;
    double seconds = 0; // of the processor
    double megabytes = 0;
};

std::ostream &operator<<(std::ostream &to, const cost &seen);

/// The number of files, sockets and hosts that `run` opens. The file `path` does not count.
int others_opened(const char *path, const std::function<void()> &run);

/// Reads a document, with the reader's own root for every ROOT in it, in a new process.
cost read_apart(const reader_row &reader, const std::string &document);

#endif
