#ifndef ZEB5XML_TEXT_TABLE_H
#define ZEB5XML_TEXT_TABLE_H

#include <string>
#include <vector>

/// Rows of cells, all of the same number, the first row being the heading.
using text_table = std::vector<std::vector<std::string>>;

/// Columns aligned for reading, two blanks between them; an empty cell shows "-".
std::string aligned(const text_table &table);

/// Cells separated by one tab each, for programs; an empty cell is empty.
std::string tabbed(const text_table &table);

#endif
