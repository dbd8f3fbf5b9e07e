#include "document.h"

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "failure.h"

namespace {

[[noreturn]] void fail(const std::string &name) {
    throw failure(STATUS_DOCUMENT, name + ": " + strerror(errno));
}

class input_file {
public:
    explicit input_file(const std::string &path)
        : fd_(path == "-" ? STDIN_FILENO : open(path.c_str(), O_RDONLY | O_CLOEXEC)) {}
    ~input_file() {
        if (fd_ > STDERR_FILENO)
            close(fd_); // only read, so a failure loses nothing
    }
    input_file(const input_file &) = delete;
    input_file &operator=(const input_file &) = delete;

    int descriptor() const { return fd_; }

private:
    int fd_;
};

} // namespace

document read_document(const std::string &path) {
    document result{path, path == "-" ? "standard input" : path, "", false};
    input_file file(path);
    struct stat status;
    if (file.descriptor() < 0 || fstat(file.descriptor(), &status) != 0)
        fail(result.name);
    result.regular_file = path != "-" && S_ISREG(status.st_mode);
    char buffer[65536];
    for (;;) {
        ssize_t count = read(file.descriptor(), buffer, sizeof buffer);
        if (count > 0)
            result.text.append(buffer, static_cast<size_t>(count));
        else if (count == 0)
            break;
        else if (errno != EINTR)
            fail(result.name);
    }
    if (result.has_nul() && !result.regular_file)
        throw failure(STATUS_DOCUMENT, result.name + ": holds NUL bytes, as UTF-16 does; "
                                                     "such a document can only be read from a regular file");
    return result;
}
