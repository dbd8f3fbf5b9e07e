#ifndef CAPTURE_H
#define CAPTURE_H

/// What a piece of code writes to the process's two standard streams, whole.

#include <cstdio>
#include <iostream>
#include <stdexcept>
#include <string>
#include <unistd.h>

struct captured {
    std::string out;
    std::string err;
};

/// One descriptor turned to a temporary file while this lives.
class redirected_stream {
public:
    redirected_stream(int fd, FILE *stream) : fd_(fd), stream_(stream), file_(tmpfile()), saved_(dup(fd)) {
        if (!file_ || saved_ < 0)
            throw std::runtime_error("cannot redirect a standard stream");
        fflush(stream_);
        dup2(fileno(file_), fd_);
    }
    ~redirected_stream() {
        if (file_)
            (void)text();
    }
    redirected_stream(const redirected_stream &) = delete;
    redirected_stream &operator=(const redirected_stream &) = delete;

    /// Ends the redirection and returns what was written.
    std::string text() {
        fflush(stream_);
        dup2(saved_, fd_);
        close(saved_);
        std::string all(static_cast<size_t>(lseek(fileno(file_), 0, SEEK_END)), '\0');
        lseek(fileno(file_), 0, SEEK_SET);
        if (read(fileno(file_), all.data(), all.size()) != static_cast<ssize_t>(all.size()))
            throw std::runtime_error("cannot read back what was captured");
        fclose(file_);
        file_ = nullptr;
        return all;
    }

private:
    int fd_;
    FILE *stream_;
    FILE *file_;
    int saved_;
};

/// Runs `code` and returns what it wrote. Exceptions pass through with the streams restored.
template <class Code> captured capture(Code &&code) {
    redirected_stream out(STDOUT_FILENO, stdout);
    redirected_stream err(STDERR_FILENO, stderr);
    code();
    std::cout.flush();
    std::cerr.flush();
    captured seen;
    seen.err = err.text();
    seen.out = out.text();
    return seen;
}

#endif
