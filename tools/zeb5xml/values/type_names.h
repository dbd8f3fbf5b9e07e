#ifndef ZEB5XML_TYPE_NAMES_H
#define ZEB5XML_TYPE_NAMES_H

#include <cstdint>
#include <string>
#include <vector>

/// The types, which begin with 0. Bit 31 of a data-type word tells which block types its other bits mean, so
/// that there is no block type 31.
inline constexpr int last_event_type = 31, last_block_type = 62;
bool is_event_type(std::int64_t number);
bool is_block_type(std::int64_t number);

/// Their numbers, for messages.
inline constexpr char event_type_numbers[] = "from 0 to 31",
                      block_type_numbers[] = "from 0 to 30 and from 32 to 62";

/// Return the number of an event type or data block type; -1 when there is none. The text is a number, or a
/// name in upper or lower case, with or without its common prefix. Names are those of the event-utility
/// library.
int event_type_of(const std::string &text);
int block_type_of(const std::string &text);

/// Return why a text is no type, with the nearest name; empty when it is one.
std::string event_type_fault(const std::string &text);
std::string block_type_fault(const std::string &text);

/// Name of an event type; "(null)", as in listings, when the event-utility library has none. A site may bring
/// a library of its own.
std::string event_name(int event_type);

/// Names of the types in a mask.
std::vector<std::string> event_names(std::uint32_t mask);
std::vector<std::string> block_names(std::uint32_t dtype);

/// The numbers of those types in a mask that have no name, or only their number for one.
std::vector<std::string> unnamed_events(std::uint32_t mask);
std::vector<std::string> unnamed_blocks(std::uint32_t dtype);

/// With this bit in a data-type word, bit k means block type k + 32.
inline constexpr std::uint32_t blocks_2010 = 0x80000000;

/// The data-type word of this block type alone.
std::uint32_t word_of_block(int block_type);

/// Whether the data-type word has the block type: bit 31 of the word selects types from 32 on.
bool has_block(std::uint32_t dtype, int block_type);

#endif
