#ifndef ZEB5_ELEMENT_ROW_H
#define ZEB5_ELEMENT_ROW_H

/// What the readers make of each element, as tables: one for each kind of document. Readers check their own
/// tables against these when they are compiled; `zeb5xml check` and the schemas are made from them.

#include <cstddef>
#include <cstdint>
#include <limits>
#include <span>
#include <stdexcept>
#include <string_view>
#include <type_traits>
#include <vector>

#include "text/field_text.h"

namespace zeb5 {

/// How a reader takes the text of an element.
enum class value_kind {
    NONE,     // not at all: the element only opens a level
    UNREAD,   // not at all: it is written for other programs
    TEXT,     // as it stands, cut to the size of the field
    INTEGER,  // base 10, then cut to 32 bits
    MASK,     // the same; all 32 bits count, with or without a sign
    UNSIGNED, // base 10, or base 16 with 0x
    REAL      // a decimal fraction
};

// Ways into the records, by the address of a record or of the list

using text_access = std::string_view (*)(const void *record);
using number_access = double (*)(const void *record); // exact for every field of a record
using part_access = const void *(*)(const void *owner, std::size_t index); // null behind the last part

/// Level of the root's children; the other levels are numbered from 1 by each kind of document.
inline constexpr int root_level = 0;
inline constexpr int no_level = -1;

/// One kind of record or group that elements belong to.
struct level_row {
    const char *noun;
    int parent;       // the level that it is part of
    part_access part; // finds its records in the one around it, or in the list; null: it has none
};

struct element_row {
    std::string_view name;
    int level = root_level; // the element acts on the current record of this level
    value_kind value = value_kind::NONE;
    int opens = no_level;           // a new record or group of this level becomes the current one
    std::size_t size = 0;           // of the field of a text, its NUL included; 0: any length is kept
    text_access text = nullptr;     // the field that a text goes to
    number_access number = nullptr; // the field that a number goes to
    std::int64_t least = std::numeric_limits<std::int32_t>::min();
    std::int64_t most = std::numeric_limits<std::int32_t>::max(); // that makes sense
    int added = 0;                                                // the reader adds this to the number
    std::string_view attribute = {}; // the number comes from this attribute, not from the text
    std::string_view only_in = {};   // it acts in records that were opened by this element only
    bool is_identity = false;        // a record is listed when all of its identities have come
    bool is_stray = false;           // it acts here for the sake of old documents; no writer puts it here
    const char *absence = nullptr;   // what a reader makes of a document without the element
};

/// The elements of one kind of document.
struct document_elements {
    std::string_view root;
    std::span<const element_row> rows; // of rows of one name, the first whose level is open counts
    std::span<const level_row> levels;
};

// Ways into records by members, one inside the other

template <class> struct member_of;
template <class Record, class Field> struct member_of<Field Record::*> { using record = Record; };

template <auto Member, auto... Inner, class Record> constexpr const auto &field_in(const Record &record) {
    if constexpr (sizeof...(Inner) == 0)
        return record.*Member;
    else
        return field_in<Inner...>(record.*Member);
}

template <auto Member, auto... Inner> const auto &field_at(const void *record) {
    return field_in<Member, Inner...>(
        *static_cast<const typename member_of<decltype(Member)>::record *>(record));
}

template <auto... Members> std::string_view text_at(const void *record) {
    return field_text(field_at<Members...>(record));
}

template <auto... Members> double number_at(const void *record) {
    return static_cast<double>(field_at<Members...>(record));
}

template <class Part> const void *part_of_list(const std::vector<Part *> &parts, std::size_t index) {
    return index < parts.size() ? parts[index] : nullptr;
}

template <class Record> const void *listed(const void *list, std::size_t index) {
    return part_of_list(*static_cast<const std::vector<Record *> *>(list), index);
}

template <auto Parts> const void *part_at(const void *record, std::size_t index) {
    return part_of_list(field_at<Parts>(record), index);
}

// Rows

template <auto... Members> constexpr element_row text_row(std::string_view name, int level) {
    return {.name = name,
            .level = level,
            .value = value_kind::TEXT,
            .size = sizeof(std::remove_cvref_t<decltype(field_at<Members...>(nullptr))>),
            .text = text_at<Members...>};
}

template <auto... Members>
constexpr element_row number_row(std::string_view name, int level, value_kind kind = value_kind::INTEGER) {
    element_row row{.name = name, .level = level, .value = kind, .number = number_at<Members...>};
    if (kind == value_kind::MASK || kind == value_kind::UNSIGNED)
        row.most = std::numeric_limits<std::uint32_t>::max();
    if (kind == value_kind::UNSIGNED || kind == value_kind::REAL)
        row.least = 0;
    return row;
}

constexpr element_row unread_row(std::string_view name, int level) {
    return {.name = name, .level = level, .value = value_kind::UNREAD};
}

constexpr element_row opening(int opens, element_row row) {
    row.opens = opens;
    return row;
}

constexpr element_row within(std::int64_t least, std::int64_t most, element_row row) {
    row.least = least;
    row.most = most;
    return row;
}

/// For what is counted, or numbered from 0 or 1.
constexpr element_row not_negative(element_row row) { return within(0, row.most, row); }

constexpr element_row identity(element_row row) {
    row.is_identity = true;
    return row;
}

constexpr element_row stray(element_row row) {
    row.is_stray = true;
    return row;
}

constexpr element_row missing(const char *absence, element_row row) {
    row.absence = absence;
    return row;
}

// What readers check

/// Returns the name of an element whose text or number goes to the field; otherwise the reader does not
/// compile.
template <auto... Members>
consteval std::string_view kept_in(std::span<const element_row> rows, std::string_view name) {
    for (const element_row &row : rows) {
        if (row.name != name)
            continue;
        if constexpr (requires { field_text(field_at<Members...>(nullptr)); }) {
            if (row.text == text_at<Members...>)
                return name;
        } else if (row.number == number_at<Members...>)
            return name;
    }
    throw std::logic_error("the published rows keep this element elsewhere");
}

/// Whether the reader's table has exactly the names that the published rows read.
template <class Rows> consteval bool has_names_of(const Rows &table, std::span<const element_row> rows) {
    for (const element_row &row : rows) {
        bool is_found = row.value == value_kind::UNREAD;
        for (const auto &own : table)
            is_found = is_found || own.tag == row.name;
        if (!is_found)
            return false;
    }
    for (const auto &own : table) {
        bool is_found = false;
        for (const element_row &row : rows)
            is_found = is_found || (own.tag == row.name && row.value != value_kind::UNREAD);
        if (!is_found)
            return false;
    }
    return true;
}

} // namespace zeb5

#endif
