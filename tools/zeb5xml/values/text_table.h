#ifndef ZEB5XML_TEXT_TABLE_H
#define ZEB5XML_TEXT_TABLE_H

#include <string>
#include <vector>

/// Rows with the same number of cells each; the first row is the heading.
using text_table = std::vector<std::vector<std::string>>;

/// Returns aligned columns for people, with two blanks between them; an empty cell shows "-".
std::string aligned(const text_table &table);

/// Returns cells separated by single tabs for programs, escaped as those of `export`; an empty cell is empty.
std::string tabbed(const text_table &table);

#endif
