#include "text/output_file.h"

#include <cerrno>
#include <iostream>

#include <fcntl.h>
#include <unistd.h>

namespace zeb5 {

namespace {

output_file open_above_standard_streams(const char *name) {
    output_file file(std::fopen(name, "w"));
    if (!file || fileno(file.get()) > STDERR_FILENO)
        return file;
    const int fd = fcntl(fileno(file.get()), F_DUPFD, STDERR_FILENO + 1);
    if (fd == -1)
        return nullptr;
    file.reset(fdopen(fd, "w"));
    if (!file)
        close(fd);
    return file;
}

} // namespace

output_file open_output(const char *writer, const char *name) {
    output_file file = open_above_standard_streams(name);
    if (!file) {
        const int why = errno; // the output must not change it
        std::cout << writer << " failed to open file: '" << name << "'" << std::endl;
        errno = why;
        std::perror("fopen");
    }
    return file;
}

} // namespace zeb5
