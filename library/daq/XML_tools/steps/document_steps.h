#ifndef ZEB5_DOCUMENT_STEPS_H
#define ZEB5_DOCUMENT_STEPS_H

/// How every reader walks a document: look at the root, take steps, sum up.
///
/// The steps come from the scanner of plain documents. Where a document is not plain, the XML library reads
/// it from its beginning, and the steps that were delivered before are passed over. A reader cannot tell
/// which.

#include <cstddef>
#include <memory>
#include <optional>
#include <string_view>

#include "SAX_File_Parser.h"
#include "SAX_Memory_Parser.h"
#include "steps/plain_file.h"
#include "steps/step_scanner.h"

namespace zeb5 {

/// A document in memory.
class memory_document {
public:
    using parser = SAX_Memory_Parser;

    explicit memory_document(char *text) : text_(text) {}

    /// The bytes for the scanner; null when only the XML library may read them.
    std::unique_ptr<plain_window> open_window();

    /// Makes the parser and starts it; returns false when that fails, which was reported then.
    bool start(std::optional<parser> &made);

    /// Reports if the document has changed while it was read; returns whether it has.
    bool reports_change() const { return false; }

private:
    char *text_;
};

/// A document in a file, which is opened once.
class file_document {
public:
    using parser = SAX_File_Parser;

    explicit file_document(char *path) : path_(path) {}

    std::unique_ptr<plain_window> open_window();
    bool start(std::optional<parser> &made);
    bool reports_change() const;

private:
    char *path_;
    std::optional<plain_file> file_;
};

/// The steps of one document that deliver a tag.
template <class Document> class document_steps {
public:
    /// `source` is the text or the path. What goes wrong is reported as the parsers report it.
    explicit document_steps(char *source);
    document_steps(const document_steps &) = delete;
    document_steps &operator=(const document_steps &) = delete;

    /// From now on steps have the rows of this reader.
    void set_rows(row_finder find_row);

    /// Takes a step that means something to the reader, or the root's before there is one. It is then the
    /// current one. Returns false at the end, and when the document cannot be read any further.
    bool next() { return (scanner_ && scanner_->next_step(current_)) || next_otherwise(); }

    const step &current() const { return current_; }

    // Both only after next() has returned true

    /// The name of the current element.
    std::string_view tag() const;

    /// The value of an attribute of the current element; nullopt for none.
    std::optional<std::string_view> attribute(const char *name);

    /// Reports so far: those of the parser, and 1 when it could not go on where the scanner left off.
    int error_count();

private:
    bool next_otherwise();
    bool hand_over();
    bool start_parser();
    bool next_of_parser();
    bool take_parser_step();

    Document document_;
    std::unique_ptr<plain_window> window_;
    std::unique_ptr<step_scanner> scanner_; // null: the parser has taken over
    std::optional<typename Document::parser> parser_;
    row_finder find_row_ = nullptr;
    step current_;
    char *parser_tag_ = nullptr;
    char *parser_value_ = nullptr;
    std::uint32_t parser_element_ = 0; // that parser_row_ was found for; they count from 1
    reader_row parser_row_;
    int failures_ = 0;
    bool is_over_ = false;
};

/// The two kinds of source. A reader's own variants derive from these and add what differs between them.
struct from_memory {
    using steps = document_steps<memory_document>;
};

struct from_file {
    using steps = document_steps<file_document>;
};

/// Reads one document. `walk(steps, root)` gets the root's name, walks the rest and returns the reader's
/// status. The result is that status, or 1 when the document cannot be started, plus the number of reports; 1
/// for a null source.
template <class Source, class Walk> int walk_document(char *source, Walk walk) {
    if (!source)
        return 1;
    typename Source::steps steps(source);
    const int status = steps.next() ? walk(steps, steps.tag()) : 1;
    return status + steps.error_count();
}

/// Has `reader` act on every step, up to the end or the first report.
template <class Steps, class Reader> void for_each_step(Steps &steps, Reader &reader) {
    steps.set_rows(Reader::row_of);
    while (steps.next())
        reader.act(steps.current());
}

} // namespace zeb5

#endif
