#ifndef ZEB5_ELEMENT_NAMES_H
#define ZEB5_ELEMENT_NAMES_H

/// The element names of one document: each is looked up once and from then on recognised by one comparison.

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

#include "text/byte_block.h"

namespace zeb5 {

/// What an element means to a reader.
struct reader_row {
    static constexpr int none = -1;

    int number = none;       // of the reader's row of the element
    bool acts_alone = false; // whether it acts without a text, too
};

/// Finds what an element name means.
using row_finder = reader_row (*)(std::string_view name);

/// One name. It is quick when it has at most 16 bytes and is not made slow. Entries are not cleared before
/// use: a document has some twenty names, and there is room for 128.
struct element_name {
    static constexpr std::size_t most_bytes = 31;
    static constexpr std::size_t most_quick_bytes = block_bytes;

    byte_block first_bytes; // of the name
    unsigned quick_bits;    // one for each byte of the name; not quick: one beyond those of a block
    std::uint32_t length;
    reader_row row;
    element_name *next;        // the name of the start tag that followed this one last time
    element_name *next_before; // and another one that followed it earlier
    char bytes[most_bytes + 1];

    std::string_view text() const { return {bytes, length}; }

    /// Whether `text`, of which 16 bytes can be read, begins with the name; always false when the name is not
    /// quick.
    bool quickly_begins(const char *text) const {
        return (top_bits(load_block(text) == first_bytes) & quick_bits) == quick_bits;
    }

    bool begins(const char *text) const { return std::memcmp(text, bytes, length) == 0; }

    void make_slow() { quick_bits = 1U << block_bytes; }

    /// Notes the start tag that follows.
    void set_next(element_name *name) {
        if (next != name) {
            next_before = next;
            next = name;
        }
    }

    /// Returns the name that `text` begins with, if it is quick and one of the two noted as following; else
    /// null.
    element_name *next_at(const char *text) {
        if (!next->quickly_begins(text)) {
            if (!next_before->quickly_begins(text))
                return nullptr;
            set_next(next_before);
        }
        return next;
    }
};

class element_names {
public:
    /// From now on, the rows of names are those of this reader, also for names that are known already.
    void set_rows(row_finder find_row);

    /// Returns the entry of a name, which is added if need be; null when the name is too long or there are
    /// too many.
    element_name *find(std::string_view name);

private:
    static constexpr std::size_t most_names = 128;
    static constexpr std::size_t places = 2 * most_names;

    element_name *add(std::string_view name);

    std::array<element_name, most_names> names_;
    std::array<std::uint8_t, places> numbers_{}; // by hash: number of the name, from 1; 0: free
    std::size_t count_ = 0;
    row_finder find_row_ = nullptr;
};

} // namespace zeb5

#endif
