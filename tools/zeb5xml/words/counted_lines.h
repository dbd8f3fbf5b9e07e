#ifndef ZEB5XML_COUNTED_LINES_H
#define ZEB5XML_COUNTED_LINES_H

#include <cstddef>
#include <streambuf>

/// Passes the bytes of a source on, and knows the line of the byte that was taken last.
class counted_lines : public std::streambuf {
public:
    explicit counted_lines(std::streambuf &source) : source_(source) {}

    /// Counted from 1.
    std::size_t line();

    /// The byte that was taken last; a blank before the first.
    char last() const { return gptr() == eback() ? ' ' : gptr()[-1]; }

protected:
    int_type underflow() override;

private:
    std::streambuf &source_;
    std::size_t line_ends_ = 0;     // before the byte at `counted_`
    const char *counted_ = nullptr; // in the block
    char block_[65536];             // begins with the last byte of the block before
};

#endif
