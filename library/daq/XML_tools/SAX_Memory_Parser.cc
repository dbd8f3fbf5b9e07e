#include "SAX_Memory_Parser.h"

#include "steps/sax_step_handlers.h"

MemParseHandlers::MemParseHandlers() = default;

MemParseHandlers::~MemParseHandlers() {
    zeb5::sax_step_handlers::drop_attributes(*this);
    zeb5::sax_step_handlers::reset_document(*this);
}

void MemParseHandlers::getTagValue(char **tag_out, char **value_out) const {
    *tag_out = tag;
    *value_out = value;
}

void MemParseHandlers::resetTagValue() {
    resetTag();
    resetValue();
}

void MemParseHandlers::reset_end_tag_flag() { zeb5::sax_step_handlers::reset_end_tag_flag(*this); }

void MemParseHandlers::startElement(const XMLCh *const name, xercesc::AttributeList &attributes) {
    zeb5::sax_step_handlers::start_element(*this, name, attributes);
}

void MemParseHandlers::endElement(const XMLCh *const) { end_flag = true; }

void MemParseHandlers::characters(const XMLCh *const chars, const XMLSize_t length) {
    zeb5::sax_step_handlers::characters(*this, chars, length);
}

void MemParseHandlers::ignorableWhitespace(const XMLCh *const, const XMLSize_t length) {
    fSpaceCount += static_cast<std::uint32_t>(length);
}

void MemParseHandlers::resetDocument() { zeb5::sax_step_handlers::reset_document(*this); }

void MemParseHandlers::warning(const xercesc::SAXParseException &exception) {
    zeb5::sax_step_handlers::report(*this, "Warning", exception);
}

void MemParseHandlers::error(const xercesc::SAXParseException &exception) {
    zeb5::sax_step_handlers::report(*this, "Error", exception);
}

void MemParseHandlers::fatalError(const xercesc::SAXParseException &exception) {
    zeb5::sax_step_handlers::report(*this, "Fatal Error", exception);
}

SAX_Memory_Parser::SAX_Memory_Parser(char *str) {
    auto platform = str ? zeb5::sax_step_handlers::open_platform() : nullptr;
    if (!platform)
        return;
    handler = std::make_unique<MemParseHandlers>();
    parser = zeb5::sax_step_handlers::create_parser(std::move(platform), *handler);
    memBufIS = std::make_unique<xercesc::MemBufInputSource>(reinterpret_cast<const XMLByte *>(str),
                                                            std::strlen(str), "my_mem_info", false);
    init = true;
}

SAX_Memory_Parser::~SAX_Memory_Parser() {
    memBufIS.reset(); // before the parser, which releases the platform
}

bool SAX_Memory_Parser::init_ok() { return init; }

int SAX_Memory_Parser::start() { return init ? zeb5::sax_step_handlers::start(*this, *memBufIS) : 1; }

int SAX_Memory_Parser::parse(char **tag, char **value) {
    return zeb5::sax_step_handlers::parse(*this, tag, value);
}

int SAX_Memory_Parser::get_attr(char *name, char **res) {
    return zeb5::sax_step_handlers::get_attr(*this, name, res);
}

int SAX_Memory_Parser::get_error_counter() { return init ? handler->getErrorCount() : 0; }
