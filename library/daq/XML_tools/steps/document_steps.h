#ifndef ZEB5_DOCUMENT_STEPS_H
#define ZEB5_DOCUMENT_STEPS_H

/// How every reader walks a document: look at the root, take steps, sum up.
///
/// The steps come from the scanner of plain documents. Where a document is not plain, the XML library reads
/// it from its beginning, and the steps that were delivered before are passed over. A reader cannot tell
/// which.

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string_view>

#include "steps/plain_window.h"
#include "steps/step_scanner.h"

namespace zeb5 {

/// A document as its bytes, and as the steps that the XML library takes through it.
class document {
public:
    document() = default;
    virtual ~document() = default;
    document(const document &) = delete;
    document &operator=(const document &) = delete;

    /// The bytes for the scanner; null when only the XML library may read them.
    virtual std::unique_ptr<plain_window> open_window() = 0;

    /// Makes the parser and starts it. Returns false when that fails, which was reported then.
    virtual bool start() = 0;

    // The pull reader's, once it was started

    virtual int parse(char **tag, char **value) = 0;
    virtual std::optional<std::string_view> attribute(const char *name) = 0;
    virtual std::uint32_t element_count() const = 0;

    /// Reports of the parser so far, if there is one.
    virtual int error_count() = 0;

    /// Reports if the document has changed while it was read; returns whether it has.
    virtual bool reports_change() const = 0;
};

/// The steps of one document that deliver a tag.
class document_steps {
public:
    /// What goes wrong is reported as the parsers report it.
    explicit document_steps(document &document);
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

    document &document_;
    std::unique_ptr<plain_window> window_;
    std::unique_ptr<step_scanner> scanner_; // null: the parser has taken over
    row_finder find_row_ = nullptr;
    step current_;
    char *parser_tag_ = nullptr;
    char *parser_value_ = nullptr;
    std::uint32_t parser_element_ = 0; // that parser_row_ was found for; they count from 1
    reader_row parser_row_;
    int failures_ = 0;
    bool has_handed_over_ = false; // to the parser
    bool is_over_ = false;
};

/// Has `reader` act on every step, up to the end or the first report.
template <class Reader> void for_each_step(document_steps &steps, Reader &reader) {
    steps.set_rows(Reader::row_of);
    while (steps.next())
        reader.act(steps.current());
}

} // namespace zeb5

#endif
