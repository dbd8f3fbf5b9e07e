#include "SAX_File_Parser.h"

#include "steps/sax_step_handlers.h"

FileParseHandlers::FileParseHandlers() = default;

FileParseHandlers::~FileParseHandlers() {
    zeb5::sax_step_handlers::drop_attributes(*this);
    zeb5::sax_step_handlers::reset_document(*this);
}

void FileParseHandlers::getTagValue(char **tag_out, char **value_out) const {
    *tag_out = tag;
    *value_out = value;
}

void FileParseHandlers::resetTagValue() {
    resetTag();
    resetValue();
}

void FileParseHandlers::reset_end_tag_flag() { zeb5::sax_step_handlers::reset_end_tag_flag(*this); }

void FileParseHandlers::startElement(const XMLCh *const name, xercesc::AttributeList &attributes) {
    zeb5::sax_step_handlers::start_element(*this, name, attributes);
}

void FileParseHandlers::endElement(const XMLCh *const) { end_flag = true; }

void FileParseHandlers::characters(const XMLCh *const chars, const XMLSize_t length) {
    zeb5::sax_step_handlers::characters(*this, chars, length);
}

void FileParseHandlers::ignorableWhitespace(const XMLCh *const, const XMLSize_t length) {
    fSpaceCount += static_cast<std::uint32_t>(length);
}

void FileParseHandlers::resetDocument() { zeb5::sax_step_handlers::reset_document(*this); }

void FileParseHandlers::resetErrors() { fSawErrors = false; }

void FileParseHandlers::warning(const xercesc::SAXParseException &exception) {
    zeb5::sax_step_handlers::report(*this, "Warning", exception);
}

void FileParseHandlers::error(const xercesc::SAXParseException &exception) {
    zeb5::sax_step_handlers::report(*this, "Error", exception);
}

void FileParseHandlers::fatalError(const xercesc::SAXParseException &exception) {
    zeb5::sax_step_handlers::report(*this, "Fatal Error", exception);
}

SAX_File_Parser::SAX_File_Parser() {
    auto platform = zeb5::sax_step_handlers::open_platform();
    if (!platform)
        return;
    parser = zeb5::sax_step_handlers::create_parser(std::move(platform), handler);
    init = true;
}

SAX_File_Parser::~SAX_File_Parser() = default;

bool SAX_File_Parser::init_ok() { return init; }

int SAX_File_Parser::start(char *path) {
    return init && path ? zeb5::sax_step_handlers::start(*this, path) : 1;
}

int SAX_File_Parser::parse(char **tag, char **value) {
    return zeb5::sax_step_handlers::parse(*this, tag, value);
}

int SAX_File_Parser::get_attr(char *name, char **res) {
    return zeb5::sax_step_handlers::get_attr(*this, name, res);
}

int SAX_File_Parser::get_error_counter() { return handler.getErrorCount(); }
