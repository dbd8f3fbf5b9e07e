#ifndef ZEB5XML_RECORD_LIST_H
#define ZEB5XML_RECORD_LIST_H

#include <cstddef>
#include <functional>
#include <memory>
#include <span>
#include <string>

#include "files/document.h"
#include "values/record.h"

/// What `convert` is told about the records.
struct conversion {
    bool shift = false;           // type numbers are turned into masks
    bool keep_duplicates = false; // channels of one property are not merged
    bool classic_layout = false;  // of an env index dictionary
};

/// A field that a form does not hold, or not as it was.
struct form_loss {
    const char *field;             // "dims.stats", with all that is below it
    bool is_accepted;              // written nevertheless, as nobody expects the form to hold it
    const char *was = nullptr;     // only this is changed; null: anything
    const char *becomes = nullptr; // to this; null: anything
};

/// A form in which records can be written.
struct form {
    const char *name; // of --to
    bool is_document; // a reader can read it back
    int mode;         // of the library's writer
    int dialect;
    std::span<const form_loss> losses = {};
};

/// The records of one document of any kind. Reading, listing and writing say on the standard streams what the
/// library says.
class record_list {
public:
    virtual ~record_list() = default;

    /// Reads as a process of the data acquisition does, with the file reader. Returns 0, or the number of
    /// problems; records read before a problem stay.
    virtual int read(const document &source) = 0;
    virtual void print() const = 0;
    virtual size_t size() const = 0;

    // The records as plain values

    virtual const record_type &type() const = 0;
    virtual record at(size_t place) const = 0;
    virtual value identity_at(size_t place) const = 0;
    virtual void append(const record &fields) = 0;

    /// Leaves out all records for which `wanted` returns false.
    virtual void keep(const std::function<bool(const record &)> &wanted) = 0;

    // Conversion, of kinds that have forms

    /// Reads as the library does when it converts: channels of one property are merged. Returns as read()
    /// does.
    virtual int read_to_convert(const document &source) = 0;

    /// Reads what write() wrote, as it stands.
    virtual int read_back(std::string text) = 0;

    /// Returns the records in this form; when the writer fails, its result.
    virtual int write(const form &to, std::string &text) const = 0;
};

/// All that differs between the kinds of records.
struct record_kind {
    const char *name;         // what messages call a document: "event list"
    const char *with_article; // "an event list"
    const char *records;      // its records, in the plural
    const record_type *type;
    std::unique_ptr<record_list> (*make)(const conversion &how);
    std::span<const form> forms = {};          // in which `convert` can write them
    std::span<const char *const> options = {}; // of `convert` that are for them
    bool writes_once = false; // of several records with one identity, only the first is written
};

extern const record_kind channel_records;
extern const record_kind event_records;
extern const record_kind dictionary_records;
extern const record_kind camera_records;

#endif
