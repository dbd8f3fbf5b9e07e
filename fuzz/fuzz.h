#ifndef FUZZ_H
#define FUZZ_H

/// What the harnesses share. A harness is one function, LLVMFuzzerTestOneInput(): libFuzzer calls it with
/// inputs of its own making, replay.cc with those that lie in files.

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>
#include <vector>

#include <fcntl.h>
#include <unistd.h>

#include "support/memory_file.h"
#include "xml_platform.h"

/// A document, followed by bytes that choose what is done with it. They are taken from the end, so that any
/// document is an input.
class fuzz_input {
public:
    fuzz_input(const std::uint8_t *data, std::size_t size)
        : rest_(reinterpret_cast<const char *>(data), size) {}

    /// The next byte of choices; 0 when there is none left.
    unsigned choice() {
        if (rest_.empty())
            return 0;
        const auto last = static_cast<unsigned char>(rest_.back());
        rest_.remove_suffix(1);
        return last;
    }

    /// What is left, NUL bytes included.
    std::string_view bytes() const { return rest_; }

    /// What is left up to its first NUL, with a NUL behind it, in a block of just that size, so that reading
    /// past it shows.
    std::vector<char> text() const {
        const std::string_view text = rest_.substr(0, rest_.find('\0'));
        std::vector<char> block(text.size() + 1);
        text.copy(block.data(), text.size());
        return block;
    }

private:
    std::string_view rest_;
};

/// The path of the process's one file, which now holds the document.
inline char *in_a_file(std::string_view document) {
    static memory_file file;
    return file.holding(document);
}

/// From here on to the end of the process.
inline void hold_the_platform() { static const xml_platform platform; }

/// Failures are reported here: standard error as it was at the start, before a harness redirected it.
inline const int failure_fd = fcntl(STDERR_FILENO, F_DUPFD_CLOEXEC, 100);

[[noreturn]] inline void fail(const std::string &why) {
    dprintf(failure_fd, "%s\n", why.c_str());
    std::abort();
}

inline void expect(bool holds, const char *what) {
    if (!holds)
        fail(std::string("does not hold: ") + what);
}

inline void expect_same(const char *what, const std::string &one, const std::string &other) {
    if (one != other)
        fail(std::string(what) + " differ:\n" + one + "\n---- and ----\n" + other);
}

#endif
