#ifndef ZEB5_NUMBER_TEXT_H
#define ZEB5_NUMBER_TEXT_H

/// Reads numbers as strtol() and sscanf() do, at a fraction of their cost when the text is plain.

#include <cstdint>
#include <string_view>

namespace zeb5 {

/// Works as strtol() in base 10: leading blanks and a sign are allowed, what follows the number is ignored,
/// and the result is 0 for no number.
long to_number(std::string_view text);

// A text that holds no number leaves the field as it was.

/// Works as sscanf() with " 0x%X " for a text that has an x, else with "%u".
/// Kept: only a small x makes it hexadecimal; 0X1F is 0, as every consumer of event lists takes it
void read_unsigned(std::string_view text, std::uint32_t &field);

/// Works as sscanf() with "%f": the decimal point is that of the locale, and rounding follows the thread's
/// mode.
void read_float(std::string_view text, float &field);

} // namespace zeb5

#endif
