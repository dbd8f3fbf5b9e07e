#ifndef DESCRIPTORS_H
#define DESCRIPTORS_H

/// Descriptors as destinations, good and bad ones.

#include <filesystem>
#include <iterator>
#include <string>

#include <fcntl.h>
#include <unistd.h>

#include "support/test_files.h"

/// A destination that is a descriptor: what was written to it can be read back.
class descriptor {
public:
    descriptor() : fd_(open(file_.c_path(), O_WRONLY | O_CLOEXEC)) {}
    ~descriptor() { close(fd_); }
    descriptor(const descriptor &) = delete;
    descriptor &operator=(const descriptor &) = delete;
    int fd() const { return fd_; }
    std::string text() const { return file_.text(); }

private:
    temporary_file file_;
    int fd_;
};

/// The number that the next descriptor gets. Takes no memory.
inline int first_free_descriptor() {
    const int fd = dup(STDIN_FILENO);
    close(fd);
    return fd;
}

/// How many descriptors the process has open.
inline std::size_t open_descriptors() {
    const std::filesystem::directory_iterator entries("/proc/self/fd");
    return static_cast<std::size_t>(std::distance(begin(entries), end(entries)));
}

/// A number that no descriptor has, high enough that catching the standard streams does not take it.
inline int closed_descriptor() {
    const int fd = fcntl(STDOUT_FILENO, F_DUPFD_CLOEXEC, 500);
    close(fd);
    return fd;
}

#endif
