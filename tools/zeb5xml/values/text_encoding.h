#ifndef ZEB5XML_TEXT_ENCODING_H
#define ZEB5XML_TEXT_ENCODING_H

/// Texts of records are bytes: of UTF-8, of ISO-8859-1, or of UTF-8 that was cut within a character. For a
/// program that takes UTF-8 only, a field whose texts are not all UTF-8 is taken as ISO-8859-1, in which any
/// bytes are a text. It is told which fields these are, so nothing is lost.

#include <optional>
#include <string>
#include <string_view>

#include "values/record.h"

bool is_utf8(std::string_view bytes);

/// How the bytes of a field are taken.
enum text_encoding { UTF_8, LATIN_1 };

/// The encoding in which all texts of the value, those of its parts among them, can be taken.
text_encoding encoding_of(const value &one);

/// Name of the field that lists the fields taken as ISO-8859-1.
inline constexpr const char *LATIN_1_FIELDS = "latin_1";

/// Names of the fields taken as ISO-8859-1.
texts latin_1_fields(const record &fields, const record_type &type);

/// The bytes as UTF-8 text.
std::string utf8_text(std::string_view bytes, text_encoding encoding);

/// Returns the bytes with each UTF-8 character that ISO-8859-1 has in this encoding; all other bytes stay.
std::string latin_1_where_possible(std::string_view bytes);

/// Returns nothing when the text has a character that ISO-8859-1 has not, or is no UTF-8.
std::optional<std::string> latin_1_from_utf8(std::string_view text);

#endif
