#include "readers/documents.h"

#include <iostream>

#include "steps/sax_step_handlers.h"

namespace zeb5 {

template <class Parser> std::optional<std::string_view> parsed_document<Parser>::attribute(const char *name) {
    char *value = nullptr;
    sax_step_handlers::get_attr(*parser_, name, &value);
    return value ? std::optional<std::string_view>(value) : std::nullopt;
}

template <class Parser> std::uint32_t parsed_document<Parser>::element_count() const {
    return sax_step_handlers::element_count(*parser_);
}

template class parsed_document<SAX_Memory_Parser>;
template class parsed_document<SAX_File_Parser>;

std::unique_ptr<plain_window> memory_document::open_window() {
    return std::make_unique<memory_window>(text_);
}

bool memory_document::start() {
    parser_.emplace(text_);
    return parser_->init_ok() && parser_->start() == 0;
}

std::unique_ptr<plain_window> file_document::open_window() {
    file_.emplace(path_);
    return file_->is_open() ? std::make_unique<file_window>(*file_) : nullptr;
}

bool file_document::start() {
    parser_.emplace();
    if (!parser_->init_ok())
        return false;
    const bool is_open = file_ && file_->is_open();
    return (is_open ? sax_step_handlers::start(*parser_, sax_step_handlers::opened_file{path_, *file_})
                    : parser_->start(path_)) == 0;
}

bool file_document::reports_change() const {
    if (!file_ || !file_->is_open() || !file_->has_changed())
        return false;
    std::cerr << "\nError at (file " << path_ << "): the file has changed while it was read" << std::endl;
    return true;
}

} // namespace zeb5
