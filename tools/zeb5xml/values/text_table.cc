#include "values/text_table.h"

#include <algorithm>

#include "values/table_text.h"
#include "words/utf_8.h"

namespace {

/// Replaces control characters, so that a cell stays on one line.
std::string plain(std::string cell) {
    for (char &c : cell)
        if (static_cast<unsigned char>(c) < ' ' || c == 0x7f)
            c = ' ';
    return cell;
}

size_t characters(const std::string &utf8) {
    return static_cast<size_t>(
        std::count_if(utf8.begin(), utf8.end(), [](char c) { return !continues_character(c); }));
}

std::string shown(const std::string &cell) { return cell.empty() ? "-" : plain(cell); }

} // namespace

std::string aligned(const text_table &table) {
    std::vector<size_t> widths;
    for (const auto &row : table) {
        widths.resize(std::max(widths.size(), row.size()));
        for (size_t i = 0; i < row.size(); ++i)
            widths[i] = std::max(widths[i], characters(shown(row[i])));
    }
    std::string text;
    for (const auto &row : table) {
        for (size_t i = 0; i < row.size(); ++i) {
            std::string cell = shown(row[i]);
            text += cell;
            if (i + 1 < row.size())
                text.append(widths[i] - characters(cell) + 2, ' ');
        }
        text += '\n';
    }
    return text;
}

std::string tabbed(const text_table &table) {
    std::string text;
    for (const auto &row : table)
        text += tsv_line(row);
    return text;
}
