#ifndef ZEB5_XML_TEXT_H
#define ZEB5_XML_TEXT_H

/// The text of a document while it is written: elements with a value, at a few copies each.
///
/// This takes less than a tenth of the instructions of appending to a string tag by tag: room is made once
/// for values that follow each other, texts are copied 16 bytes at a time whatever their length, and numbers
/// are formatted in place.

#include <array>
#include <bit>
#include <cstdint>
#include <cstring>
#include <initializer_list>
#include <string>
#include <string_view>
#include <type_traits>

#include "text/byte_block.h"

namespace zeb5 {

/// A piece of text of at most 32 bytes. All 32 bytes are copied, whatever its length.
class short_piece {
public:
    static constexpr std::size_t room = 32;

    consteval short_piece(std::initializer_list<std::string_view> parts) {
        for (const std::string_view part : parts)
            for (const char character : part)
                text_[length_++] = character; // a piece that is too long does not compile
    }

    constexpr std::string_view text() const { return {text_, length_}; }

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

/// A value and the texts around it: `Around` has a `start` and an `end`.
template <class Around, class Value> struct framed_value { const Value &value; };

template <class Around, class Value> framed_value<Around, Value> framed(const Value &value) {
    return {value};
}

template <const element_tags &Name> struct in_element {
    static constexpr const short_piece &start = Name.start;
    static constexpr const short_piece &end = Name.end;
};

/// A line of start tag, value and end tag.
template <const element_tags &Name, class Value>
framed_value<in_element<Name>, Value> element(const Value &value) {
    return {value};
}

template <const element_tags &Name> struct in_opening_line {
    static constexpr const short_piece &start = Name.start;
    static constexpr short_piece end = short_piece({"\n"});
};

/// Start tag with the element's own number; the children follow on their own lines.
template <const element_tags &Name>
framed_value<in_opening_line<Name>, std::int32_t> opening(const std::int32_t &number) {
    return {number};
}

/// Stands for no value.
struct no_value {};

template <const element_tags &Name> struct in_closing_tag {
    static constexpr const short_piece &start = Name.end;
    static constexpr short_piece end = short_piece({});
};

/// A line of the start tag alone, among values.
template <const element_tags &Name> framed_value<in_opening_line<Name>, no_value> opening() {
    static constexpr no_value none;
    return {none};
}

/// A line of the end tag alone, among values.
template <const element_tags &Name> framed_value<in_closing_tag<Name>, no_value> closing() {
    static constexpr no_value none;
    return {none};
}

template <class... Around> consteval auto join() {
    std::array<short_piece, sizeof...(Around) + 1> ends = {short_piece({}), Around::end...};
    const std::array<short_piece, sizeof...(Around) + 1> starts = {Around::start..., short_piece({})};
    for (std::size_t i = 0; i < ends.size(); ++i)
        ends[i] = short_piece({ends[i].text(), starts[i].text()});
    return ends;
}

/// The pieces before, between and after values that always follow each other. The end of one value and the
/// start of the next are a single piece, which saves a tenth of the instructions of a channel.
template <class... Around> inline constexpr auto joined = join<Around...>();

/// A growing text.
class xml_text {
public:
    /// Uses the memory of `text`, whose content is replaced; `expected`: about how long the text becomes.
    explicit xml_text(std::string text = {}, std::size_t expected = 0);
    xml_text(const xml_text &) = delete;
    xml_text &operator=(const xml_text &) = delete;

    /// Returns the whole text; nothing may be added after that.
    std::string take();

    // Kept: nothing is escaped; readers of these documents see the values as they are

    void put(const short_piece &piece) {
        make_room();
        end_ = copy(end_, piece);
    }
    void put(std::string_view text);

    /// Values that always follow each other: texts of fixed fields and numbers.
    template <class... Around, class... Value> void put(const framed_value<Around, Value> &...parts) {
        static_assert((room_of<Value> + ... + short_piece::room) <= call_room, "this would need more room");
        make_room();
        const short_piece *piece = joined<Around...>.data();
        char *at = end_;
        ((at = copy(copy(at, *piece++), parts.value)), ...);
        end_ = copy(at, *piece);
    }

    /// One line; `format` is "%e" or "%f".
    void put_float(const element_tags &name, float number, const char *format);

    /// A line that holds the start tag alone.
    void open(const element_tags &name) {
        put(name.start);
        *end_++ = '\n'; // a piece leaves room for it
    }

    void close(const element_tags &name) { put(name.end); }

    void line_end() { put(short_piece({"\n"})); }

private:
    /// Bytes that one call may put. There is room for them at its beginning.
    static constexpr std::size_t call_room = 2048;

    /// Bytes that a value may take, with the piece before it.
    template <class Value>
    static constexpr std::size_t room_of = short_piece::room +
                                           (std::is_array_v<Value> ? sizeof(Value) : std::size_t{16});

    void make_room() {
        if (end_ > last_with_room_)
            grow();
    }

    static char *copy(char *at, const short_piece &piece) { return piece.copy_to(at); }
    static char *copy(char *at, no_value) { return at; }

    /// Copies the text of a fixed field; the whole field when somebody has overwritten the NUL. In blocks
    /// this takes a quarter of the instructions of memccpy(); most texts fit in one block.
    template <std::size_t N> static char *copy(char *at, const char (&field)[N]) {
        static_assert(N % block_bytes == 0, "the last block would reach beyond the field");
        if (const unsigned nuls = copy_block(at, field))
            return at + std::countr_zero(nuls);
        return copy_blocks(at + block_bytes, field + block_bytes, field + N);
    }

    /// Copies a block; returns a mask of its bytes that are NUL.
    static unsigned copy_block(char *at, const char *from) {
        const byte_block bytes = load_block(from);
        store_block(at, bytes);
        return top_bits(bytes == byte_block{});
    }
    static char *copy_blocks(char *at, const char *from, const char *end);

    static char *copy(char *at, std::int32_t number) {
        if (number < 0 || number > 9)
            return copy_number(at, number);
        *at = static_cast<char>('0' + number); // most numbers; saves the call
        return at + 1;
    }
    static char *copy_number(char *at, std::int32_t number);

    /// Kept: masks come out as the signed number of their 32 bits, as readers of these documents take them.
    static char *copy(char *at, std::uint32_t mask) { return copy(at, static_cast<std::int32_t>(mask)); }

    void grow();

    std::string text_; // with room behind the end
    char *end_;
    const char *last_with_room_; // from any later end a call might not fit
};

} // namespace zeb5

#endif
