#ifndef ZEB5XML_DOCUMENT_H
#define ZEB5XML_DOCUMENT_H

#include <string>

/// A document that is given on the command line, with its whole text.
struct document {
    std::string path; // as given; "-" is standard input
    std::string name; // what messages call it
    std::string text;
    bool regular_file; // a file reader can read it again; pipes and standard input can be read only once

    /// Whether the text holds NUL bytes, as UTF-16 does: it cannot be passed on as a C string then.
    bool has_nul() const { return text.find('\0') != std::string::npos; }
};

/// Throws failure when the document cannot be read, or when only a file reader could read it and it is no
/// regular file.
document read_document(const std::string &path);

#endif
