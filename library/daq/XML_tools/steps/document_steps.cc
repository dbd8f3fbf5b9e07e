#include "steps/document_steps.h"

#include <cstring>
#include <utility>

#include <xercesc/util/XMLException.hpp>

#include "steps/plain_lane.h"
#include "steps/sax_step_handlers.h"

namespace zeb5 {

document_steps::document_steps(document &document) : document_(document) {
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

void document_steps::set_rows(row_finder find_row) {
    find_row_ = find_row;
    parser_element_ = 0; // the row of the current element, too, is looked up anew
    if (scanner_)
        scanner_->set_rows(find_row);
}

std::string_view document_steps::tag() const {
    return scanner_ ? scanner_->tag() : std::string_view(parser_tag_);
}

std::optional<std::string_view> document_steps::attribute(const char *name) {
    if (scanner_)
        return scanner_->attribute(name);
    return document_.attribute(name);
}

int document_steps::error_count() { return document_.error_count() + failures_; }

/// Takes the step after the last one of the scanner, and every step of the parser.
bool document_steps::next_otherwise() {
    if (!is_over_ && !has_handed_over_)
        is_over_ = !hand_over();
    return !is_over_ && next_of_parser();
}

/// Lets the parser take over from the scanner and passes over the steps that the scanner delivered. Returns
/// false when nothing is left for the parser to do, or when the parser fails.
bool document_steps::hand_over() {
    const bool has_finished = scanner_ && scanner_->has_finished();
    const auto left = std::move(scanner_); // lives on here, as it may hold the platform until the parser does
    std::size_t delivered = left ? left->delivered() : 0;
    tell_lane_end(has_finished     ? lane_end::FINISHED
                  : delivered != 0 ? lane_end::LEFT_MIDWAY
                                   : lane_end::LEFT_AT_ONCE);
    if (has_finished)
        return false;
    if (document_.reports_change() || !start_parser()) {
        failures_ += delivered != 0; // if not even the root was delivered, walk_document() counts the failure
        return false;
    }
    has_handed_over_ = true;
    for (; delivered != 0; --delivered)
        if (!take_parser_step())
            return false;
    return true;
}

bool document_steps::start_parser() {
    const bool has_started = document_.start();
    if (!has_started)
        document_.reports_change(); // which may be the reason
    return has_started;
}

/// Takes the next step of the parser that delivers a tag, and keeps its tag and value.
bool document_steps::take_parser_step() {
    do
        if (const int result = document_.parse(&parser_tag_, &parser_value_); result != 0) {
            if (result > 0)
                document_.reports_change(); // which may be the reason
            return false;
        }
    while (!parser_tag_);
    return true;
}

bool document_steps::next_of_parser() {
    while (take_parser_step()) {
        const std::uint32_t element = document_.element_count();
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

} // namespace zeb5
