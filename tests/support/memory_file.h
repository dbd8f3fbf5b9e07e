#ifndef MEMORY_FILE_H
#define MEMORY_FILE_H

/// Files that are in memory, for what is written to a descriptor.

#include <cstdio>
#include <stdexcept>
#include <string>
#include <string_view>

#include <sys/mman.h>
#include <unistd.h>

/// A file in memory, whose path stays the same from content to content.
class memory_file {
public:
    memory_file()
        : fd_(memfd_create("zeb5_test", MFD_CLOEXEC)), path_("/proc/self/fd/" + std::to_string(fd_)) {
        if (fd_ < 0)
            throw std::runtime_error("no file in memory");
    }
    ~memory_file() { close(fd_); }
    memory_file(const memory_file &) = delete;
    memory_file &operator=(const memory_file &) = delete;

    int fd() const { return fd_; }
    char *path() { return path_.data(); }

    /// Gives it new content; returns its path.
    char *holding(std::string_view content) {
        if (ftruncate(fd_, 0) != 0 ||
            pwrite(fd_, content.data(), content.size(), 0) != static_cast<ssize_t>(content.size()))
            throw std::runtime_error("cannot write to a file in memory");
        return path();
    }

    /// Its content, whose end is where the next write to the descriptor goes. There are tests that answer for
    /// pread() themselves.
    std::string text() const {
        std::string content(static_cast<std::size_t>(lseek(fd_, 0, SEEK_END)), '\0');
        lseek(fd_, 0, SEEK_SET);
        if (read(fd_, content.data(), content.size()) != static_cast<ssize_t>(content.size()))
            throw std::runtime_error("cannot read a file in memory");
        return content;
    }

    /// Its content; empties it.
    std::string take() {
        std::string content = text();
        if (ftruncate(fd_, 0) != 0 || lseek(fd_, 0, SEEK_SET) != 0)
            throw std::runtime_error("cannot empty a file in memory");
        return content;
    }

private:
    int fd_;
    std::string path_;
};

#endif
