#ifndef ZEB5_DOCUMENT_STEPS_H
#define ZEB5_DOCUMENT_STEPS_H

/// How every reader walks a document: it looks at the root, takes steps and counts errors.
///
/// The steps come from the scanner of plain documents. A document that is not plain is read by the XML
/// library from its beginning, and the steps that the scanner has delivered are passed over. A reader cannot
/// tell the two ways apart.

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string_view>

#include "steps/plain_window.h"
#include "steps/step_scanner.h"

namespace zeb5 {

/// A document: its bytes for the scanner, and the steps that the XML library takes through it.
class document {
public:
    document() = default;
    virtual ~document() = default;
    document(const document &) = delete;
    document &operator=(const document &) = delete;

    /// Returns the bytes for the scanner; null when only the XML library may read them.
    virtual std::unique_ptr<plain_window> open_window() = 0;

    /// Makes the parser and starts it. Returns false when that failed and was reported.
    virtual bool start() = 0;

    // As the pull reader's; only after start()

    virtual int parse(const char **tag, const char **value) = 0;
    virtual std::optional<std::string_view> attribute(const char *name) = 0;
    virtual std::uint32_t element_count() const = 0;

    /// Number of the parser's reports so far; 0 without a parser.
    virtual int error_count() = 0;

    /// Returns whether the document has changed while it was read, and reports it then.
    virtual bool reports_change() const = 0;
};

/// Those steps of one document that deliver a tag.
class document_steps {
public:
    /// Failures are reported as the parsers report them.
    explicit document_steps(document &document);
    document_steps(const document_steps &) = delete;
    document_steps &operator=(const document_steps &) = delete;

    /// From now on, the rows of steps are those of this reader.
    void set_rows(row_finder find_row);

    /// Takes the next step that means something to the reader; without a reader, the root's. It becomes the
    /// current step. Returns false at the end, and when the document cannot be read any further.
    bool next() { return (scanner_ && scanner_->next_step(current_)) || next_otherwise(); }

    const step &current() const { return current_; }

    // Call both only after next() has returned true

    /// The name of the current element.
    std::string_view tag() const;

    /// The value of an attribute of the current element; nullopt for none.
    std::optional<std::string_view> attribute(const char *name);

    /// Number of reports so far: those of the parser, plus 1 when the parser could not continue after the
    /// scanner.
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
    const char *parser_tag_ = nullptr;
    const char *parser_value_ = nullptr;
    std::uint32_t parser_element_ = 0; // whose row is parser_row_; elements count from 1
    reader_row parser_row_;
    int failures_ = 0;
    bool has_handed_over_ = false; // to the parser
    bool is_over_ = false;
};

/// Passes every step to `reader`, up to the end or the first report.
template <class Reader> void for_each_step(document_steps &steps, Reader &reader) {
    steps.set_rows(Reader::row_of);
    while (steps.next())
        reader.act(steps.current());
}

} // namespace zeb5

#endif
