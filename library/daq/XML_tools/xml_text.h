#ifndef ZEB5_XML_TEXT_H
#define ZEB5_XML_TEXT_H

/// The text of a document while it is written: elements with a value, at a few copies each.
///
/// Against appending to a string tag by tag this takes a sixth of the instructions: room is made once a part
/// of a record, a tag is copied with a fixed size, and numbers are formatted in place.

#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <initializer_list>
#include <memory>
#include <string_view>

namespace zeb5 {

/// A piece of text of at most 32 bytes, copied with that size whatever its length.
class short_piece {
public:
    static constexpr std::size_t room = 32;

    consteval short_piece(std::initializer_list<std::string_view> parts) {
        for (const std::string_view part : parts)
            for (const char character : part)
                text_[length_++] = character; // a piece that is too long does not compile
    }

    char *copy_to(char *at) const {
        std::memcpy(at, text_, room);
        return at + length_;
    }

private:
    char text_[room] = {};
    std::size_t length_ = 0;
};

/// Start and end tag of one element.
struct element_tags {
    consteval element_tags(const char *name) : start({"<", name, ">"}), end({"</", name, ">\n"}) {}

    short_piece start;
    short_piece end;
};

/// A growing text. Before every part of a record make_room(); one part is at most 15 texts of fixed
/// fields and 20 numbers.
class xml_text {
public:
    static constexpr std::size_t part_room = 8192;

    void make_room() {
        if (size_ + part_room > capacity_)
            grow();
    }

    std::string_view view() const { return {bytes_.get(), size_}; }

    // Kept: nothing is escaped; readers of these documents know only what stands between the tags

    void put(const short_piece &piece);
    void put(std::string_view text);
    void put(std::int32_t number);
    template <std::size_t N> void put(const char (&field)[N]) { put_field(field, N); }

    // One line each: start tag, value, end tag; `format` is "%e" or "%f".
    template <std::size_t N> void element(const element_tags &name, const char (&field)[N]) {
        element_field(name, field, N);
    }
    void element(const element_tags &name, std::int32_t number);
    void element(const element_tags &name, float number, const char *format);

    /// Kept: masks come out as the signed number of their 32 bits, as readers of these documents take them.
    void element(const element_tags &name, std::uint32_t mask) {
        element(name, static_cast<std::int32_t>(mask));
    }

    /// A line that holds the start tag alone.
    void open(const element_tags &name);

    /// Start tag with the element's own number; the children follow on their own lines.
    void open(const element_tags &name, std::int32_t number);

    void close(const element_tags &name);

    void line_end() { bytes_.get()[size_++] = '\n'; }

private:
    void put_field(const char *field, std::size_t size);
    void element_field(const element_tags &name, const char *field, std::size_t size);

    struct release {
        void operator()(char *bytes) const { std::free(bytes); }
    };

    char *end() { return bytes_.get() + size_; }
    void end_at(const char *end) { size_ = static_cast<std::size_t>(end - bytes_.get()); }
    void grow();

    std::unique_ptr<char, release> bytes_;
    std::size_t size_ = 0;
    std::size_t capacity_ = 0;
};

} // namespace zeb5

#endif
