#ifndef DESCRIPTORS_H
#define DESCRIPTORS_H

/// Which descriptors the process has open, and a number that none has.

#include <filesystem>
#include <iterator>

#include <fcntl.h>
#include <unistd.h>

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
