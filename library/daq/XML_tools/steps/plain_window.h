#ifndef ZEB5_PLAIN_WINDOW_H
#define ZEB5_PLAIN_WINDOW_H

/// The bytes of a document while they are scanned, a part at a time.

#include <cstddef>
#include <memory>

#include "steps/plain_file.h"

namespace zeb5 {

/// How the bytes of a document stand for characters.
enum class plain_encoding { UTF_8, ISO_8859_1, ASCII };

/// Gives the scanner the bytes up to a limit, all of them checked to be characters of the document's
/// encoding.
///
/// The XML library decodes up to 16,384 characters ahead of what it delivers, and reports a byte that is none
/// before the steps that precede it. So a part of what lies behind the limit is checked, too.
class plain_window {
public:
    virtual ~plain_window() = default;
    plain_window(const plain_window &) = delete;
    plain_window &operator=(const plain_window &) = delete;

    /// So many bytes can be read from any place before the limit, or as many behind it.
    static constexpr std::ptrdiff_t readable = 64;

    /// Loads the first part, unchecked, so that the declaration can be read. Returns false when the document
    /// cannot be read.
    bool load();
    const char *begin() const { return begin_; }
    const char *loaded() const { return loaded_; }

    /// Says which characters extend() is to check the bytes for.
    void set_encoding(plain_encoding encoding) { encoding_ = encoding; }

    /// Bytes before this may be scanned.
    const char *limit() const { return limit_; }

    /// Moves the limit on. The bytes from `from` on are kept; `from` is set to their new place. Returns false
    /// at the document's end, and when the document is not plain or cannot be read.
    bool extend(const char *&from);

    /// Whether the limit is the end of the document.
    bool is_at_end() const { return limit_ == end_; }

protected:
    plain_window() = default;

    /// Loads at least one byte more, or sets end_; returns false when the document cannot be read.
    virtual bool load_more(const char *&from) = 0;

    /// With end_ known, moves the limit on; sees to it that bytes can be read behind it. Returns false when
    /// it was at the end.
    virtual bool extend_to_end(const char *&from) = 0;

    const char *begin_ = nullptr;
    const char *limit_ = nullptr;   // before it everything may be scanned
    const char *checked_ = nullptr; // before it all bytes are characters of the encoding
    const char *loaded_ = nullptr;  // before it everything can be read
    const char *end_ = nullptr;     // of the document; null: not known yet

private:
    bool check();

    plain_encoding encoding_ = plain_encoding::UTF_8;
};

/// Over a text in memory, which is scanned where it stands; only its last bytes are copied.
class memory_window final : public plain_window {
public:
    /// `text` is NUL-terminated and must outlive the window.
    explicit memory_window(const char *text) { begin_ = limit_ = checked_ = loaded_ = text; }

private:
    bool load_more(const char *&from) override;
    bool extend_to_end(const char *&from) override;

    std::unique_ptr<char[]> last_bytes_;
};

/// Over a file, in a buffer of at most 256 KB.
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
