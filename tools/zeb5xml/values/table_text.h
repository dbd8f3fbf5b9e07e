#ifndef ZEB5XML_TABLE_TEXT_H
#define ZEB5XML_TABLE_TEXT_H

/// Records as rows of a table, in UTF-8. Lists of parts are JSON in one cell, several names are separated by
/// colons, and the last column names the fields whose texts were taken as ISO-8859-1.

#include <string>

#include "values/record.h"

/// Names of the columns: the source if asked for, the fields, the names of masks and types behind them, and
/// "latin_1".
texts table_heading(const record_type &type, bool with_source);

/// The cells of a record. Empty `source`: the table has no such column.
texts table_row(const record &fields, const record_type &type, const std::string &source);

/// The cells as one row of CSV (RFC 4180, with CR LF), or of TSV, in which \\, \t, \n and \r stand for these
/// characters.
std::string csv_line(const texts &cells);
std::string tsv_line(const texts &cells);

#endif
