#include "files/bounded_file.h"

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

std::string too_long(std::size_t most) { return "longer than " + std::to_string(most >> 20) + " MiB"; }

std::string read_descriptor(int fd, std::size_t most, std::string &bytes) {
    char buffer[65536];
    for (;;) {
        const ssize_t count = read(fd, buffer, sizeof buffer);
        if (count == 0)
            return "";
        if (count > 0)
            bytes.append(buffer, static_cast<std::size_t>(count));
        else if (errno != EINTR)
            return std::strerror(errno);
        if (bytes.size() > most)
            return too_long(most);
        if (bytes.compare(0, 4, "\0\0\0\0", 4) == 0)
            return "it begins with NUL bytes, as no document does";
    }
}

} // namespace

std::string read_bounded(const std::string &path, std::size_t most, std::string &bytes) {
    if (path == "-")
        return read_descriptor(STDIN_FILENO, most, bytes);
    const int fd = open(path.c_str(), O_RDONLY | O_CLOEXEC);
    if (fd < 0)
        return std::strerror(errno);
    struct stat status;
    const bool is_too_long =
        fstat(fd, &status) == 0 && S_ISREG(status.st_mode) && static_cast<std::size_t>(status.st_size) > most;
    std::string problem = is_too_long ? too_long(most) : read_descriptor(fd, most, bytes);
    close(fd); // only read, so a failure loses nothing
    return problem;
}
