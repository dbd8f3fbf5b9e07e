#ifndef ZEB5XML_DOCUMENT_KINDS_H
#define ZEB5XML_DOCUMENT_KINDS_H

#include "records/record_list.h"

/// A kind of document, with all that differs between kinds.
struct document_kind : record_kind {
    const char *root; // root element; null: recognised by the document's content
    const char *form; // name of the form that such a document is in; null: none can be written
};

/// Throws failure when the document holds nothing but white space.
void refuse_blank(const document &source);

/// Returns the kind of `source`. When it is of no known kind, passes the parser's reports on and throws
/// failure.
const document_kind &kind_of(const document &source);

/// Returns the names of all forms in which records of some kind can be written.
std::vector<std::string> form_names();

/// Returns the kinds whose records can be written in the form.
std::vector<const record_kind *> kinds_of_form(const std::string &name);

#endif
