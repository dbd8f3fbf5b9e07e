#include "steps/document_steps.h"

#include <cstring>
#include <iostream>
#include <utility>

#include <xercesc/util/XMLException.hpp>

#include "sax_step_handlers.h"
#include "steps/plain_lane.h"

namespace zeb5 {

std::unique_ptr<plain_window> memory_document::open_window() {
    return std::make_unique<memory_window>(text_);
}

bool memory_document::start(std::optional<parser> &made) {
    made.emplace(text_);
    return made->init_ok() && made->start() == 0;
}

std::unique_ptr<plain_window> file_document::open_window() {
    file_.emplace(path_);
    return file_->is_open() ? std::make_unique<file_window>(*file_) : nullptr;
}

bool file_document::start(std::optional<parser> &made) {
    made.emplace();
    if (!made->init_ok())
        return false;
    const bool is_open = file_ && file_->is_open();
    return (is_open ? sax_step_handlers::start(*made, sax_step_handlers::opened_file{path_, *file_})
                    : made->start(path_)) == 0;
}

bool file_document::reports_change() const {
    if (!file_ || !file_->is_open() || !file_->has_changed())
        return false;
    std::cerr << "\nError at (file " << path_ << "): the file has changed while it was read" << std::endl;
    return true;
}

template <class Document> document_steps<Document>::document_steps(char *source) : document_(source) {
    try {
        if (is_lane_open())
            window_ = document_.open_window();
    } catch (const xercesc::XMLException &problem) {
        sax_step_handlers::report_failed_platform(problem);
        is_over_ = true;
    }
    if (!window_)
        return;
    scanner_ = std::make_unique<step_scanner>(*window_);
    if (!scanner_->start())
        scanner_.reset();
}

template <class Document> void document_steps<Document>::set_rows(row_finder find_row) {
    find_row_ = find_row;
    parser_element_ = 0; // the current element, too, means something else now
    if (scanner_)
        scanner_->set_rows(find_row);
}

template <class Document> std::string_view document_steps<Document>::tag() const {
    return scanner_ ? scanner_->tag() : std::string_view(parser_tag_);
}

template <class Document>
std::optional<std::string_view> document_steps<Document>::attribute(const char *name) {
    if (scanner_)
        return scanner_->attribute(name);
    char *value = nullptr;
    sax_step_handlers::get_attr(*parser_, name, &value);
    return value ? std::optional<std::string_view>(value) : std::nullopt;
}

template <class Document> int document_steps<Document>::error_count() {
    return (parser_ ? parser_->get_error_counter() : 0) + failures_;
}

/// Behind the last step of the scanner, and for each step of the parser.
template <class Document> bool document_steps<Document>::next_otherwise() {
    if (!is_over_ && !parser_)
        is_over_ = !hand_over();
    return !is_over_ && next_of_parser();
}

/// Lets the parser take over from the scanner, behind the steps that the scanner delivered. Returns false
/// when there is nothing left to do for the parser, or it cannot do it.
template <class Document> bool document_steps<Document>::hand_over() {
    const bool has_finished = scanner_ && scanner_->has_finished();
    const auto left = std::move(scanner_); // it may hold the platform until the parser does
    std::size_t delivered = left ? left->delivered() : 0;
    tell_lane_end(has_finished     ? lane_end::FINISHED
                  : delivered != 0 ? lane_end::LEFT_MIDWAY
                                   : lane_end::LEFT_AT_ONCE);
    if (has_finished)
        return false;
    if (document_.reports_change() || !start_parser()) {
        failures_ += delivered != 0; // a document that does not start has a result of its own
        return false;
    }
    for (; delivered != 0; --delivered)
        if (!take_parser_step())
            return false;
    return true;
}

template <class Document> bool document_steps<Document>::start_parser() {
    const bool has_started = document_.start(parser_);
    if (!has_started)
        document_.reports_change(); // which may be the reason
    return has_started;
}

/// Takes a step of the parser that delivers a tag, into its own strings.
template <class Document> bool document_steps<Document>::take_parser_step() {
    do
        if (const int result = parser_->parse(&parser_tag_, &parser_value_); result != 0) {
            if (result > 0)
                document_.reports_change(); // which may be the reason
            return false;
        }
    while (!parser_tag_);
    return true;
}

template <class Document> bool document_steps<Document>::next_of_parser() {
    while (take_parser_step()) {
        const std::uint32_t element = sax_step_handlers::element_count(*parser_);
        if (element != parser_element_) {
            parser_element_ = element;
            parser_row_ = find_row_ ? find_row_(parser_tag_) : reader_row{.acts_alone = true};
        }
        if (parser_value_ ? parser_row_.number != reader_row::none : parser_row_.acts_alone) {
            current_ = {parser_row_.number, element, parser_value_,
                        parser_value_ ? std::strlen(parser_value_) : 0};
            return true;
        }
    }
    return false;
}

template class document_steps<memory_document>;
template class document_steps<file_document>;

} // namespace zeb5
