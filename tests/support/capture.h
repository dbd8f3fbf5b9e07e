#ifndef CAPTURE_H
#define CAPTURE_H

/// What a piece of code writes to the process's two standard streams: caught whole, or thrown away.

#include <cstdio>
#include <iostream>
#include <stdexcept>
#include <string>

#include <fcntl.h>
#include <unistd.h>

#include "support/memory_file.h"

struct captured {
    std::string out;
    std::string err;
};

inline void flush_streams() {
    std::cout.flush();
    std::cerr.flush();
    std::fflush(stdout);
}

/// Redirects both standard streams to other descriptors while this object exists.
class turned_streams {
public:
    turned_streams(int out, int err) : out_(dup(STDOUT_FILENO)), err_(dup(STDERR_FILENO)) {
        flush_streams();
        if (out_ < 0 || err_ < 0 || dup2(out, STDOUT_FILENO) < 0 || dup2(err, STDERR_FILENO) < 0)
            throw std::runtime_error("cannot turn the standard streams elsewhere");
    }
    ~turned_streams() {
        flush_streams();
        dup2(out_, STDOUT_FILENO);
        dup2(err_, STDERR_FILENO);
        close(out_);
        close(err_);
    }
    turned_streams(const turned_streams &) = delete;
    turned_streams &operator=(const turned_streams &) = delete;

private:
    int out_, err_;
};

/// Runs `code` and returns what it wrote. Exceptions pass through with the streams restored.
template <class Code> captured capture(Code &&code) {
    memory_file out, err;
    {
        const turned_streams turned(out.fd(), err.fd());
        code();
    }
    return {out.take(), err.take()};
}

/// Throws away all messages of the library while this object exists: thousands of calls print the same ones.
class silence {
public:
    silence() = default;
    ~silence() { close(nowhere_); }
    silence(const silence &) = delete;
    silence &operator=(const silence &) = delete;

private:
    const int nowhere_ = open("/dev/null", O_WRONLY | O_CLOEXEC);
    const turned_streams turned_{nowhere_, nowhere_};
};

#endif
