#ifndef ZEB5XML_DOCUMENT_KINDS_H
#define ZEB5XML_DOCUMENT_KINDS_H

#include <cstddef>
#include <functional>
#include <memory>

#include "document.h"
#include "record.h"

/// The records of one document of any kind. Reading and listing write to the standard streams, as the library
/// does.
class record_list {
public:
    virtual ~record_list() = default;

    /// Reads as a process of the data acquisition does: a regular file with the file reader. Returns 0, or
    /// the number of problems; records read before a problem stay.
    virtual int read(document &source) = 0;
    virtual void print() const = 0;
    virtual size_t size() const = 0;

    /// The record at this place, as plain values of this type.
    virtual record at(size_t place) const = 0;
    virtual const record_type &type() const = 0;
    virtual void append(const record &fields) = 0;

    /// Leaves out all records for which `wanted` says so.
    virtual void keep(const std::function<bool(const record &)> &wanted) = 0;
};

/// Which records a document holds.
enum kind_family { CHANNELS, EVENTS, DICTIONARY, CAMERA };

struct document_kind {
    const char *root; // root element; null: recognised by the document's content
    kind_family family;
    const char *name;        // what messages call such a document
    const char *records;     // and its records
    const record_type *type; // of its records
    std::unique_ptr<record_list> (*make)();
};

/// Returns the kind of `source`. When it is of no known kind, passes the parser's reports on and throws
/// failure.
const document_kind &kind_of(document &source);

#endif
