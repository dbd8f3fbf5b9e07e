#ifndef ZEB5XML_READ_RECORDS_H
#define ZEB5XML_READ_RECORDS_H

#include <memory>
#include <string>

#include "records/document_kinds.h"

/// A document with the records that could be read from it.
struct read_records {
    document source;
    const document_kind &kind;
    std::unique_ptr<record_list> list;
    int problems; // 0: all was read

    /// Reads the document as a process of the data acquisition does; what the reader says goes to standard
    /// error. Throws failure when it is of no known kind.
    explicit read_records(const std::string &path);

    /// Throws failure when there were problems; `outcome` tells what became of the records that were read.
    void require_all(const std::string &outcome) const;
};

#endif
