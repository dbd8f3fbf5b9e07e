#ifndef OVERHEARD_H
#define OVERHEARD_H

/// For tests that call so often that nobody could read what the library says, and want to know whether some
/// line is among it.

#include <cstdio>
#include <initializer_list>
#include <string>

#include <sys/mman.h>
#include <unistd.h>

#include "support/silence.h"

/// Takes all that the library says while this lives. Opens nothing from call to call.
class overheard {
public:
    overheard() : words_(memfd_create("words", MFD_CLOEXEC)) {
        dup2(words_, STDOUT_FILENO);
        dup2(words_, STDERR_FILENO);
    }
    ~overheard() { close(words_); }
    overheard(const overheard &) = delete;
    overheard &operator=(const overheard &) = delete;

    /// What was said so far is of no interest any more.
    void begin() {
        fflush(stdout);
        begin_ = lseek(words_, 0, SEEK_END);
    }

    /// The first of `lines` in what was said since begin(); "" when none is.
    const char *first_said_of(std::initializer_list<const char *> lines) const {
        fflush(stdout);
        std::string said(static_cast<std::size_t>(lseek(words_, 0, SEEK_END) - begin_), '\0');
        said.resize(static_cast<std::size_t>(pread(words_, said.data(), said.size(), begin_)));
        for (const char *const line : lines)
            if (said.find(line) != std::string::npos)
                return line;
        return "";
    }

private:
    const silence streams_; // puts them back
    int words_;
    off_t begin_ = 0;
};

#endif
