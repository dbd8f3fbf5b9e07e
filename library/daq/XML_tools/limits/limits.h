#ifndef ZEB5_LIMITS_H
#define ZEB5_LIMITS_H

/// Every limit of a document that the XML library reads.
///
/// What a document makes a parser do has a price. The document is refused when the sum of the prices exceeds
/// both free_work and work_per_byte times its own length, as far as it was read: an honest document writes
/// down what it asks for.

#include <cstddef>
#include <cstdint>

namespace zeb5 {

/// A price of 1 is at most about a nanosecond of a processor, or a tenth of a byte of memory that stays. Most
/// prices are several times what the work takes.
using price = std::uint64_t;

/// Work that any document may ask for: up to a third of a second. It keeps a document of 10,000 bytes below a
/// second and 100 MB.
inline constexpr price free_work = 250'000'000;

/// Work for each byte of the document. References to a short entity, one behind the other, cost 4,600 a byte.
/// A channel of 40 bytes whose 32 named and described bits are one entity costs 5,700 a byte. Channels of 50
/// bytes meet the limit when each asks for 300 elements by an entity, such as 100 dimensions. A document that
/// is made for this limit takes up to 12 s for each megabyte.
inline constexpr price work_per_byte = 12'000;

/// Memory, in bytes, that the parser of any document may hold.
inline constexpr std::size_t free_memory = std::size_t{24} << 20;

/// Memory for each byte of the document. The tree of a camera file that is all short attributes takes 100
/// bytes for each of its own; one whose features have 15 children by an entity takes 500.
inline constexpr std::size_t memory_per_byte = 600;

// The prices

/// Of an element, a comment and an instruction. It includes the record that a reader makes of it: a channel
/// takes 1,600 bytes, and at least two elements; a dimension is made anew at each comment in it.
inline constexpr price element_price = 2'000;

/// Of each attribute that is declared for an element, at each such element and at the end of each list of its
/// attributes: the parser walks through them.
inline constexpr price declared_attribute_price = 40;

/// Of an attribute that an element has, written or by default, beside the characters of its name and value.
inline constexpr price attribute_price = 400;

/// Of a character of an entity that is expanded, wherever that is, and of attributes and declarations.
inline constexpr price character_price = 10;

/// Of a declaration, beside its characters.
inline constexpr price declaration_price = 2'000;

/// Of each pair of the values of an enumerated type: a parser that validates compares them all.
inline constexpr price compared_value_price = 4;

/// Of a name, group or mark of a content model.
inline constexpr price model_node_price = 500;

/// Of each pair of these, for a parser that validates: it walks through all of them for each.
inline constexpr price validated_model_price = 5;

/// Of each entry that the table of a content model's states may have, if names stand in it repeatedly: two to
/// the power of their number for each place in the model.
inline constexpr price model_entry_price = 40;

/// Of each name that a look-up compares with, at least, and of each character in it. The parser's hash tables
/// have no seed, so a document can choose names that stand in one list; even in honest documents a list may
/// have 500 of 8,000 names.
inline constexpr price compared_name_price = 20;
inline constexpr price compared_character_price = 1;

/// Of each name in a list that the processor's cache does not hold; the price of a name in shorter lists goes
/// up to this, by 1 for each 40 names.
inline constexpr price far_name_price = 200;

/// Of each character of the values of an enumerated type, for each name in an attribute of this type: the
/// parser looks it up among them.
inline constexpr price listed_character_price = 1;

/// Of a warning or an error.
inline constexpr price report_price = 8'000;

/// Bytes of memory that cost 1 when the parser asks for them, whether it keeps them or not. The parser makes
/// a reader of 164,040 bytes each time that it expands an entity, in content, attributes and declarations, so
/// an expansion costs 13,670.
inline constexpr std::size_t bytes_per_price = 12;

// What no price bounds

/// Different names of elements, and in a camera file that the DOM parser reads, of elements and attributes
/// together. The DOM parser keeps them in a table that does not grow. 4,096 names that such a table keeps in
/// one list take 0.2 s; the most that was seen in a camera file is 69.
inline constexpr std::size_t most_names = 4096;

/// Names, groups and marks of one content model, for a parser that validates. It walks through the model by
/// recursion, which takes 190 bytes of the stack for each.
inline constexpr std::size_t most_model_nodes = 512;

/// Entries that the table of the states of one content model may have. Models in which no name stands twice
/// have few. One of 39 names, three of them 13 times each, may have 958,464.
inline constexpr std::size_t most_model_entries = std::size_t{1} << 20;

} // namespace zeb5

#endif
