#include "values/table_text.h"

#include "values/field_names.h"
#include "values/json_text.h"
#include "values/text_encoding.h"
#include "words/words.h"

namespace {

std::string cell_text(const value &one, const field_row &row) {
    if (row.kind == TEXT)
        return utf8_text(one.text(), encoding_of(one));
    if (row.kind == REAL)
        return decimal_text(std::get<real>(one.content).number);
    return json_text(one, row);
}

std::string csv_cell(const std::string &cell) {
    if (cell.find_first_of(",\"\r\n") == std::string::npos)
        return cell;
    std::string quoted = "\"";
    for (const char c : cell)
        quoted.append(c == '"' ? "\"" : "") += c;
    return quoted + '"';
}

std::string tsv_cell(const std::string &cell) {
    std::string escaped;
    for (const char c : cell)
        switch (c) {
        case '\t':
            escaped += "\\t";
            break;
        case '\n':
            escaped += "\\n";
            break;
        case '\r':
            escaped += "\\r";
            break;
        case '\\':
            escaped += "\\\\";
            break;
        default:
            escaped += c;
        }
    return escaped;
}

template <class CellText> texts converted(const texts &cells, CellText text_of) {
    texts all;
    for (const std::string &cell : cells)
        all.push_back(text_of(cell));
    return all;
}

} // namespace

texts table_heading(const record_type &type, bool with_source) {
    texts cells;
    if (with_source)
        cells.push_back("source");
    for (const field_row &row : type.rows) {
        cells.push_back(row.name);
        if (has_names(row))
            cells.push_back(name_of_names(row));
    }
    cells.push_back(LATIN_1_FIELDS);
    return cells;
}

texts table_row(const record &fields, const record_type &type, const std::string &source) {
    texts cells;
    if (!source.empty())
        cells.push_back(utf8_text(source, is_utf8(source) ? UTF_8 : LATIN_1));
    for (size_t i = 0; i < type.rows.size(); ++i) {
        const field_row &row = type.rows[i];
        cells.push_back(cell_text(fields.fields[i], row));
        if (has_names(row))
            cells.push_back(joined(names_of(row, fields.fields[i]), ":"));
    }
    cells.push_back(joined(latin_1_fields(fields, type), ":"));
    return cells;
}

std::string csv_line(const texts &cells) { return joined(converted(cells, csv_cell), ",") + "\r\n"; }

std::string tsv_line(const texts &cells) { return joined(converted(cells, tsv_cell), "\t") + "\n"; }
