#ifndef ZEB5_PLAIN_WINDOW_H
#define ZEB5_PLAIN_WINDOW_H

/// Loads the bytes of a document part by part while they are scanned.

#include <cstddef>
#include <memory>

#include "steps/plain_file.h"

namespace zeb5 {

/// The encoding of a document.
enum class plain_encoding { UTF_8, ISO_8859_1, ASCII };

/// Gives the scanner the bytes up to a limit, all of which were checked to be characters of the document's
/// encoding.
///
/// The XML library decodes up to 16,384 characters ahead of what it delivers, and reports a byte that is no
/// character before it delivers the steps in front of that byte. So some bytes behind the limit are checked,
/// too.
class plain_window {
public:
    virtual ~plain_window() = default;
    plain_window(const plain_window &) = delete;
    plain_window &operator=(const plain_window &) = delete;

    /// At least this many bytes can be read from any place before the limit, and from the limit itself.
    static constexpr std::ptrdiff_t readable = 64;

    /// Loads the first part, unchecked, so that the declaration can be read. Returns false when the document
    /// cannot be read.
    bool load();
    const char *begin() const { return begin_; }
    const char *loaded() const { return loaded_; }

    /// Sets the encoding that extend() checks the bytes for.
    void set_encoding(plain_encoding encoding) { encoding_ = encoding; }

    /// The scanner may use the bytes before this.
    const char *limit() const { return limit_; }

    /// Moves the limit on. Keeps the bytes from `from` on and sets `from` to their new place. Returns false
    /// at the document's end, and when the document is not plain or cannot be read.
    bool extend(const char *&from);

    /// Whether the limit is the end of the document.
    bool is_at_end() const { return limit_ == end_; }

protected:
    plain_window() = default;

    /// Loads at least one byte more, or sets end_; returns false when the document cannot be read.
    virtual bool load_more(const char *&from) = 0;

    /// Moves the limit on when end_ is known, and makes sure that bytes can be read behind it. Returns false
    /// when the limit was at the end.
    virtual bool extend_to_end(const char *&from) = 0;

    const char *begin_ = nullptr;
    const char *limit_ = nullptr;   // bytes before it may be scanned
    const char *checked_ = nullptr; // bytes before it are characters of the encoding
    const char *loaded_ = nullptr;  // bytes before it can be read
    const char *end_ = nullptr;     // of the document; null: not known yet

private:
    bool check();

    plain_encoding encoding_ = plain_encoding::UTF_8;
};

/// Window over a text in memory. The text is scanned in place; only its last bytes are copied.
class memory_window final : public plain_window {
public:
    /// `text` is NUL-terminated and must outlive the window.
    explicit memory_window(const char *text) { begin_ = limit_ = checked_ = loaded_ = text; }

private:
    bool load_more(const char *&from) override;
    bool extend_to_end(const char *&from) override;

    std::unique_ptr<char[]> last_bytes_;
};

/// Window over a file, with a buffer of at most 256 KB.
class file_window final : public plain_window {
public:
    /// `file` is open and must outlive the window.
    explicit file_window(const plain_file &file);

private:
    bool load_more(const char *&from) override;
    bool extend_to_end(const char *&from) override;
    std::size_t free_room() const;
    void make_room(const char *&from);

    const plain_file &file_;
    std::size_t room_;
    std::unique_ptr<char[]> buffer_;
    std::size_t read_ = 0; // bytes of the file so far
};

} // namespace zeb5

#endif
