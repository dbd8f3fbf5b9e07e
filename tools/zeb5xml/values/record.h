#ifndef ZEB5XML_RECORD_H
#define ZEB5XML_RECORD_H

/// Records of every kind as plain values, and back. A record struct is described by rows, one for each of its
/// fields (records/record_types.h); whoever shows, compares or writes records walks over these rows and knows
/// no struct.

#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <variant>
#include <vector>

struct value;

/// The fields of one record or of one part of a record: a value for each row of its type, in their order.
struct record {
    std::vector<value> fields;
    bool operator==(const record &) const = default;
};

using texts = std::vector<std::string>;

/// A float that equals another one when it is shown alike: all NaN are equal.
struct real {
    float number;
    bool operator==(const real &other) const {
        return number == other.number || (number != number && other.number != other.number);
    }
};

/// One value. Texts hold the bytes of the record, which need not be UTF-8 (text_encoding.h).
struct value {
    std::variant<std::int64_t, real, std::string, texts, std::vector<record>> content;
    bool operator==(const value &) const = default;

    std::int64_t number() const { return std::get<std::int64_t>(content); }
    const std::string &text() const { return std::get<std::string>(content); }
    const std::vector<record> &parts() const { return std::get<std::vector<record>>(content); }
};

/// What a field holds. All up to FEATURE_TYPE are numbers.
enum field_kind {
    NUMBER,
    EVENT_MASK,   // bit n: event type n
    BLOCK_MASK,   // bit n: data block type n; with bit 31, type n + 32
    EVENT_TYPE,   // one event type
    FEATURE_TYPE, // one kind of camera feature
    REAL,
    TEXT,
    TEXTS, // a list of texts
    PARTS  // a list of records
};

struct record_type;

/// One field of a record struct.
struct field_row {
    const char *name; // as in the struct
    field_kind kind;
    value (*get)(const void *from);
    void (*set)(void *to, const value &content); // once for a new record; it owns what it gets
    int members;                                 // of the struct that this row covers
    std::int64_t lowest = 0;                     // of numbers
    std::int64_t highest = 0;
    size_t capacity = 0;               // most bytes of a text; 0: any
    const record_type *part = nullptr; // type of the parts
    const char *filter = nullptr;      // the option that selects records by this field
};

/// All fields of a record struct. The first row is the record's identity.
struct record_type {
    const char *name; // "channel"
    std::span<const field_row> rows;
    void *(*make)();                          // a new record as its reader makes it, without parts
    record (*fresh)(const record_type &type); // the fields of such a record

    const field_row &identity() const { return rows.front(); }
    /// Place of the row with this name; the number of rows when there is none.
    size_t place_of(const std::string &field) const;
};

/// Returns the fields of the struct at `from`, which must be of this type.
record record_from(const void *from, const record_type &type);

/// Returns a new struct with these fields. The caller owns it as if a reader had made it.
void *struct_from(const record &fields, const record_type &type);

#endif
