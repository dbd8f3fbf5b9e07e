#ifndef ZEB5_NUMBER_TEXT_H
#define ZEB5_NUMBER_TEXT_H

/// Numbers as strtol() and sscanf() read them, at a fraction of their cost where they are plain.

#include <cstdint>
#include <string_view>

namespace zeb5 {

/// strtol() in base 10: leading blanks and a sign allowed, what follows the number ignored, 0 for no number.
long to_number(std::string_view text);

// A text that holds no number leaves the field as it was.

/// sscanf() with " 0x%X " for a text that has an x, else with "%u".
/// Kept: only a small x makes it hexadecimal, 0X1F is 0, as every consumer of event lists takes it
void read_unsigned(std::string_view text, std::uint32_t &field);

/// sscanf() with "%f": the decimal point is that of the locale, and rounding follows the thread's mode.
void read_float(std::string_view text, float &field);

} // namespace zeb5

#endif
