#ifndef ZEB5XML_VALUE_TEXT_H
#define ZEB5XML_VALUE_TEXT_H

/// Values as messages show them to people, each on one line.

#include <string>

#include "values/record.h"

/// The text in quotes; quotes, control characters and bytes that are no UTF-8 are escaped.
std::string quoted_text(const std::string &bytes);

/// The text without quotes, escaped alike.
std::string plain_text(const std::string &bytes);

/// The value: "on", 7, 0xc (BOR:EOR). Lists are JSON.
std::string value_text(const value &one, const field_row &row);

/// Behind the name of a record or part: nothing for the first of its identity, " (2)" for the second.
std::string which_text(size_t which);

/// What messages call a record: its text, its name, or "index 3"; for the second of its identity, "A/B (2)".
std::string identity_text(const value &identity, const field_row &row, size_t which = 1);

#endif
