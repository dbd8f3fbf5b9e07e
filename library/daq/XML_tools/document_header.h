#ifndef ZEB5_DOCUMENT_HEADER_H
#define ZEB5_DOCUMENT_HEADER_H

/// What written documents begin with: the XML declaration and, in most, the date. All dates are local time.
/// May be called from several threads at once.

#include <ctime>
#include <string>

#include "zeb5_export.h"

/// Writes `*t` as local time, "2021-07-01T13:05:09", into `isodate_str`: 19 characters and the NUL, never
/// more than 40 bytes. A time that no calendar has gives an empty text. Does nothing when `isodate_str` is
/// null; `t` must not be null.
ZEB5_API void create_isodate(char *isodate_str, time_t *t);

/// The same for the current time.
ZEB5_API void create_isodate(char *isodate_str);

/// Replaces the whole content of `str` with the XML declaration and its line end, 45 characters.
ZEB5_API void set_xml_header(std::string &str);

/// Appends a line: a tab and the isodate element, which holds the current local time.
ZEB5_API void add_iso_date(std::string &str);

#endif
