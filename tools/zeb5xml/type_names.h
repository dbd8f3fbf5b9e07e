#ifndef ZEB5XML_TYPE_NAMES_H
#define ZEB5XML_TYPE_NAMES_H

#include <cstdint>
#include <string>

/// Number of the event type (0 to 31) or data block type (0 to 62) given by number or by name, in any case
/// and with or without its common prefix; -1 when there is none. Names are those of the event-utility
/// library.
int event_type_of(const std::string &text);
int block_type_of(const std::string &text);

/// Names of the types in a mask, separated by colons.
std::string event_names(std::uint32_t mask);
std::string block_names(std::uint32_t dtype);

/// Whether the data-type word carries the block type: bit 31 of the word selects types from 32 on.
bool has_block(std::uint32_t dtype, int block_type);

#endif
