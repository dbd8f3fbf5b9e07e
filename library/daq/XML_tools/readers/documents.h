#ifndef ZEB5_DOCUMENTS_H
#define ZEB5_DOCUMENTS_H

/// The two sources of a document: memory and file. All differences between them that concern every reader are
/// here.

#include <cstdint>
#include <optional>
#include <string_view>

#include "readers/step_parser.h"
#include "steps/document_steps.h"
#include "steps/plain_file.h"

namespace zeb5 {

/// A document with a parser of its own.
class parsed_document : public document {
public:
    int parse(const char **tag, const char **value) final;
    std::optional<std::string_view> attribute(const char *name) final;
    std::uint32_t element_count() const final { return parser_->handler.fElementCount; }
    int error_count() final { return parser_ ? parser_->handler.error_count : 0; }

protected:
    /// `source` is an input source, a path or an opened file.
    template <class Source> bool start_at(const Source &source) {
        return sax_step_handlers::start(*parser_, source) == 0;
    }

    std::optional<step_parser> parser_;
};

class memory_document final : public parsed_document {
public:
    explicit memory_document(char *text) : text_(text) {}

    std::unique_ptr<plain_window> open_window() override;
    bool start() override;
    bool reports_change() const override { return false; }

private:
    char *text_;
};

/// Opens its file once.
class file_document final : public parsed_document {
public:
    explicit file_document(char *path) : path_(path) {}

    std::unique_ptr<plain_window> open_window() override;
    bool start() override;
    bool reports_change() const override;

private:
    char *path_;
    std::optional<plain_file> file_;
};

/// Reads one document; `source` is the text or the path. `walk(steps, root)` gets the root's name, walks the
/// rest and returns the reader's status. Returns that status, or 1 when the document cannot be started, plus
/// the number of reports. Returns 1 for a null source.
template <class Document, class Walk> int walk_document(char *source, Walk walk) {
    if (!source)
        return 1;
    Document document(source);
    document_steps steps(document);
    const int status = steps.next() ? walk(steps, steps.tag()) : 1;
    return status + steps.error_count();
}

} // namespace zeb5

#endif
