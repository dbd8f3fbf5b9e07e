#ifndef ZEB5XML_JSON_TEXT_H
#define ZEB5XML_JSON_TEXT_H

/// Records as JSON (RFC 8259). Texts come out as UTF-8.

#include <string>

#include "values/record.h"
#include "values/text_encoding.h"

/// The text in quotes.
std::string json_text(const std::string &text, text_encoding encoding = UTF_8);

/// The value as it stands in JSON: a number, a text, a list.
std::string json_text(const value &one, const field_row &row);

/// The record as one object on one line, without a line end: its kind, its fields with the names of masks and
/// types behind them, and "latin_1" with the names of the fields taken as ISO-8859-1, if any. A source that
/// is not empty comes first.
std::string json_text(const record &fields, const record_type &type, const std::string &source = "");

/// A float in the fewest digits that give it back.
std::string decimal_text(float number);

#endif
