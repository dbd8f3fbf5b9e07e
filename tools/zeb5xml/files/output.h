#ifndef ZEB5XML_OUTPUT_H
#define ZEB5XML_OUTPUT_H

#include <functional>
#include <string>

/// Thrown when the reader of our standard output has closed the pipe.
struct closed_pipe {};

/// Writes all of `text` to a descriptor; `name` is its name in the text of a failure.
void write_all(int fd, const std::string &text, const std::string &name);

void write_standard_output(const std::string &text);

/// Runs `code`, which prints to standard output as the library does, and looks at the result. Nothing of it
/// is held in memory.
void print_to_standard_output(const std::function<void()> &code);

/// Gathers small pieces of text for standard output and writes them in large ones.
class output_buffer {
public:
    void add(const std::string &text) {
        text_ += text;
        if (text_.size() >= 65'536)
            flush();
    }
    void flush() {
        write_standard_output(text_);
        text_.clear();
    }

private:
    std::string text_;
};

/// Closes standard output, which some file systems use to report a failed write.
void close_standard_output();

/// Writes `text` to the file at `path`, "-" being standard output. A regular file is replaced in one move by
/// a complete new one. An existing device or pipe is written to directly.
void write_output(const std::string &path, const std::string &text);

#endif
