#ifndef ZEB5_PLAIN_FILE_H
#define ZEB5_PLAIN_FILE_H

/// A regular file, opened once for all who read it.

#include <cstddef>

#include <sys/stat.h>

namespace zeb5 {

/// Holds one open descriptor, so that the scanner and the XML library read the same file even if another file
/// gets its path meanwhile.
class plain_file {
public:
    /// Opens the file only if it is regular and not empty, and if the XML library takes the path as it
    /// stands: the path must be ASCII, be no URL, and have no ".." after a name, as the XML library shortens
    /// such a path as text.
    explicit plain_file(const char *path);
    ~plain_file();
    plain_file(const plain_file &) = delete;
    plain_file &operator=(const plain_file &) = delete;

    bool is_open() const { return fd_ >= 0; }
    std::size_t size() const { return static_cast<std::size_t>(status_.st_size); }

    /// Reads `count` bytes from the place `offset`, or fewer at the end of the file. Returns the number of
    /// bytes read, or -1 when the file cannot be read or has changed.
    long read(char *to, std::size_t count, std::size_t offset) const;

    /// Whether somebody has written to the file since it was opened: what was read may then be parts of two
    /// documents. A new time stamp counts as a change. A change that keeps the size is not seen within one
    /// tick of the file system's clock.
    bool has_changed() const;

private:
    int fd_ = -1;
    struct stat status_ = {};
};

} // namespace zeb5

#endif
