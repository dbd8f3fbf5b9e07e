#ifndef ZEB5XML_DOCUMENT_H
#define ZEB5XML_DOCUMENT_H

#include <memory>
#include <string>

/// A document that is given on the command line. Nothing of it is in memory: readers open its path, as often
/// as they like. What can be read only once, standard input or a pipe, is kept in a temporary file without a
/// name.
struct document {
    std::string path;                          // by which this process opens it
    std::string name;                          // what messages call it
    std::shared_ptr<const int> kept = nullptr; // descriptor of the temporary file, if there is one

    /// Reads the whole text now. It ends early behind bytes that no document holds.
    std::string text() const;

    /// Whether it holds nothing but white space.
    bool is_blank() const;
};

/// Whether a text holds NUL bytes, as UTF-16 does: it cannot be passed on as a C string then.
bool has_nul(const std::string &text);

/// Returns the document at `path`, "-" being standard input. Throws failure when it cannot be read.
document read_document(const std::string &path);

#endif
