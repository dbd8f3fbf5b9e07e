#include "readers/documents.h"

#include <cstring>
#include <iostream>

#include <xercesc/framework/MemBufInputSource.hpp>

namespace zeb5 {

int parsed_document::parse(const char **tag, const char **value) {
    return sax_step_handlers::parse(*parser_, tag, value);
}

std::optional<std::string_view> parsed_document::attribute(const char *name) {
    char *value = nullptr;
    sax_step_handlers::get_attr(*parser_, name, &value);
    return value ? std::optional<std::string_view>(value) : std::nullopt;
}

std::unique_ptr<plain_window> memory_document::open_window() {
    return std::make_unique<memory_window>(text_);
}

bool memory_document::start() {
    parser_.emplace();
    return parser_->init && start_at(xercesc::MemBufInputSource(reinterpret_cast<const XMLByte *>(text_),
                                                                std::strlen(text_), "my_mem_info", false));
}

std::unique_ptr<plain_window> file_document::open_window() {
    file_.emplace(path_);
    return file_->is_open() ? std::make_unique<file_window>(*file_) : nullptr;
}

bool file_document::start() {
    parser_.emplace();
    if (!parser_->init)
        return false;
    const bool is_open = file_ && file_->is_open();
    return is_open ? start_at(sax_step_handlers::opened_file{path_, *file_}) : start_at(path_);
}

bool file_document::reports_change() const {
    if (!file_ || !file_->is_open() || !file_->has_changed())
        return false;
    std::cerr << "\nError at (file " << path_ << "): the file has changed while it was read" << std::endl;
    return true;
}

} // namespace zeb5
