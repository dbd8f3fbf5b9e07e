#ifndef READ_APART_H
#define READ_APART_H

/// Readings in processes of their own, which are measured. Functions that open files or addresses are this
/// program's own, and count.

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

/// How many files, but that of `path`, and sockets and hosts `run` opens.
int others_opened(const char *path, const std::function<void()> &run);

/// Reads a document, with the reader's own root for every ROOT in it, in a new process.
cost read_apart(const reader_row &reader, const std::string &document);

#endif
