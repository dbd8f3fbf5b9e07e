#include "memory_file.h"

#include <cerrno>
#include <sys/mman.h>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>

#include "output.h"

memory_file::memory_file(const std::string &text) : fd_(memfd_create("zeb5xml", MFD_CLOEXEC)) {
    if (fd_ < 0)
        throw std::system_error(errno, std::generic_category(), "memory file");
    path_ = "/proc/self/fd/" + std::to_string(fd_);
    write_all(fd_, text, "memory file");
}

memory_file::~memory_file() { close(fd_); }

std::string memory_file::text() const {
    struct stat status;
    if (fstat(fd_, &status) != 0)
        throw std::system_error(errno, std::generic_category(), "memory file");
    // The library's writers do not report a file that took only a part of the text. Such a file has no room
    // for one more byte
    if (pwrite(fd_, "", 1, status.st_size) != 1 || ftruncate(fd_, status.st_size) != 0)
        throw std::system_error(errno, std::generic_category(), "memory file");
    std::string all(static_cast<size_t>(status.st_size), '\0');
    for (size_t done = 0; done < all.size();) {
        ssize_t count = pread(fd_, all.data() + done, all.size() - done, static_cast<off_t>(done));
        if (count <= 0)
            throw std::system_error(errno, std::generic_category(), "memory file");
        done += static_cast<size_t>(count);
    }
    return all;
}
