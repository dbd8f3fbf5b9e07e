#ifndef ZEB5XML_STANDARD_STREAMS_H
#define ZEB5XML_STANDARD_STREAMS_H

#include <initializer_list>
#include <string>
#include <vector>

#include "memory_file.h"

/// Opens what is closed of descriptors 0, 1 and 2, in a way that makes reading or writing them fail, so that
/// no other file gets their number.
void occupy_standard_descriptors();

/// Turns descriptors to a memory file while it lives: the library writes diagnostics and listings straight to
/// standard output and standard error.
class output_hold {
public:
    explicit output_hold(std::initializer_list<int> descriptors);
    ~output_hold();
    output_hold(const output_hold &) = delete;
    output_hold &operator=(const output_hold &) = delete;

    /// Ends the hold and returns what was written.
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

/// What `code` writes to the descriptors.
template <class Code> std::string held_output(std::initializer_list<int> descriptors, Code &&code) {
    output_hold hold(descriptors);
    code();
    return hold.release();
}

/// The lines that a user should see: without blank ones, and with `name` for the name that the library gives
/// to a document in memory. Each line keeps its end.
std::string readable_diagnostics(const std::string &text, const std::string &name);

/// Writes to standard error as it stands.
void write_standard_error(const std::string &text);

/// One line on standard error, with the name of the command in front.
void tell(const std::string &text);

/// Runs `code` and passes its diagnostics on to standard error.
template <class Code> void run_library(const std::string &name, Code &&code) {
    write_standard_error(readable_diagnostics(held_output({1, 2}, code), name));
}

#endif
