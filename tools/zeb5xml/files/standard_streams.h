#ifndef ZEB5XML_STANDARD_STREAMS_H
#define ZEB5XML_STANDARD_STREAMS_H

#include <initializer_list>
#include <string>
#include <vector>

#include "files/memory_file.h"

/// Opens those of descriptors 0, 1 and 2 that are closed, so that no other file gets their number. Reading or
/// writing them fails, as before.
void occupy_standard_descriptors();

/// Redirects descriptors to a memory file while it lives, as the library writes diagnostics and listings
/// directly to standard output and standard error.
class output_hold {
public:
    explicit output_hold(std::initializer_list<int> descriptors);
    ~output_hold();
    output_hold(const output_hold &) = delete;
    output_hold &operator=(const output_hold &) = delete;

    /// Ends the redirection and returns what was written.
    std::string release();

private:
    struct held {
        int descriptor;
        int original;
    };
    void restore();

    memory_file file_;
    std::vector<held> held_;
};

/// Returns what `code` writes to the descriptors.
template <class Code> std::string held_output(std::initializer_list<int> descriptors, Code &&code) {
    output_hold hold(descriptors);
    code();
    return hold.release();
}

/// Returns the lines that a user should see: without blank lines, and with `name` in place of the path or the
/// name in memory by which the library read the document. Each line keeps its line end.
std::string readable_diagnostics(const std::string &text, const std::string &name);

/// Writes `text` unchanged to standard error.
void write_standard_error(const std::string &text);

/// Writes one line to standard error, with the name of the command in front.
void tell(const std::string &text);

/// Runs `code` and passes its diagnostics on to standard error.
template <class Code> void run_library(const std::string &name, Code &&code) {
    write_standard_error(readable_diagnostics(held_output({1, 2}, code), name));
}

#endif
