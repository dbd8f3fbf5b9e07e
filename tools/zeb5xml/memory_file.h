#ifndef ZEB5XML_MEMORY_FILE_H
#define ZEB5XML_MEMORY_FILE_H

#include <string>

/// A file that exists only in memory, for functions of the library that write to or read from files only.
class memory_file {
public:
    explicit memory_file(const std::string &text = "");
    ~memory_file();
    memory_file(const memory_file &) = delete;
    memory_file &operator=(const memory_file &) = delete;

    int descriptor() const { return fd_; }
    /// A path by which this process can open the file while this object lives.
    char *path() { return path_.data(); }
    std::string text() const;

private:
    int fd_;
    std::string path_;
};

#endif
