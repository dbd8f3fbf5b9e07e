#ifndef ZEB5XML_CONVERT_H
#define ZEB5XML_CONVERT_H

#include <string>

#include "document.h"
#include "document_kinds.h"

struct convert_options {
    std::string file;
    std::string to;
    std::string output = "-";
    bool shift = false;
    bool keep_duplicates = false;
    std::string layout; // empty: not given
};

// Each reads the document and returns it in the form asked for. Both throw failure, and nothing is written
// then.
std::string convert_channels(document &source, const convert_options &options);
std::string convert_dictionary(document &source, const convert_options &options);

/// Both throw failure when the reader or the writer reported a problem.
void require_read(const document &source, int problems);
void require_written(const document &source, int result);

/// Throws the failure that a document of this kind cannot be converted to that form.
[[noreturn]] void refuse_form(const document &source, const std::string &kind, const std::string &form);

#endif
