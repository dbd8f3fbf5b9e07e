#ifndef SILENCE_H
#define SILENCE_H

/// Tests that call so often that nobody could read what the library says.

#include <cstdio>

#include <fcntl.h>
#include <unistd.h>

/// All that the library says goes nowhere while this lives: thousands of calls tell the same.
class silence {
public:
    silence() : out_(dup(STDOUT_FILENO)), err_(dup(STDERR_FILENO)) {
        fflush(stdout);
        const int nowhere = open("/dev/null", O_WRONLY | O_CLOEXEC);
        dup2(nowhere, STDOUT_FILENO);
        dup2(nowhere, STDERR_FILENO);
        close(nowhere);
    }
    ~silence() {
        fflush(stdout);
        dup2(out_, STDOUT_FILENO);
        dup2(err_, STDERR_FILENO);
        close(out_);
        close(err_);
    }
    silence(const silence &) = delete;
    silence &operator=(const silence &) = delete;

private:
    int out_, err_;
};

#endif
