#ifndef PLAIN_STEPS_H
#define PLAIN_STEPS_H

/// The pull reader written plainly, as a reference for the library's: every tag and text goes through
/// XMLString::transcode into a string of its own, and the parser is the XML library's as it comes.

#include <cstring>
#include <iostream>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include <xercesc/framework/MemBufInputSource.hpp>
#include <xercesc/framework/XMLPScanToken.hpp>
#include <xercesc/parsers/SAXParser.hpp>
#include <xercesc/sax/AttributeList.hpp>
#include <xercesc/sax/HandlerBase.hpp>
#include <xercesc/sax/SAXParseException.hpp>
#include <xercesc/util/SecurityManager.hpp>
#include <xercesc/util/XMLException.hpp>
#include <xercesc/util/XMLString.hpp>

#include "support/reader_forms.h"
#include "xml_platform.h"

inline std::string plain_text(const XMLCh *text) {
    char *const narrow = xercesc::XMLString::transcode(text);
    const std::string copy = narrow ? narrow : "";
    xercesc::XMLString::release(&const_cast<char *&>(narrow));
    return copy;
}

struct plain_attribute {
    std::string name;
    std::string value;
};

/// Takes the same steps as SAX_Memory_Parser and SAX_File_Parser.
class plain_steps : public xercesc::HandlerBase {
public:
    plain_steps(reader_form form, char *source) : form_(form), source_(source) {
        parser_.setValidationScheme(xercesc::SAXParser::Val_Auto);
        parser_.setDisableDefaultEntityResolution(true);
        limit_.setEntityExpansionLimit(1000);
        parser_.setSecurityManager(&limit_);
        parser_.setDocumentHandler(this);
        parser_.setErrorHandler(this);
    }

    int start() {
        try {
            if (form_ == READ_FILE)
                return parser_.parseFirst(source_, token_) ? 0 : complain_of_start();
            memory_ = std::make_unique<xercesc::MemBufInputSource>(
                reinterpret_cast<const XMLByte *>(source_), std::strlen(source_), "my_mem_info", false);
            return parser_.parseFirst(*memory_, token_) ? 0 : complain_of_start();
        } catch (const xercesc::XMLException &problem) {
            std::cerr << "\nError during parsing memory stream:\nException message is:  \n"
                      << plain_text(problem.getMessage()) << std::endl;
            return 1;
        }
    }

    int next() {
        if (ended_ || value) {
            tag.reset();
            value.reset();
            attributes.clear();
            ended_ = false;
        }
        if (!more_)
            return errors ? errors : -1;
        more_ = parser_.parseNext(token_);
        if (!more_)
            parser_.parseReset(token_);
        return errors;
    }

    const std::string *attribute(const std::string &name) const {
        for (const plain_attribute &known : attributes)
            if (known.name == name)
                return &known.value;
        return nullptr;
    }

    std::optional<std::string> tag, value;
    std::vector<plain_attribute> attributes;
    int errors = 0;

private:
    static int complain_of_start() {
        std::cerr << "scanFirst() failed\n";
        return 1;
    }

    void startElement(const XMLCh *const name, xercesc::AttributeList &list) override {
        tag = plain_text(name);
        attributes.clear();
        for (XMLSize_t i = 0; i < list.getLength(); ++i)
            attributes.push_back({plain_text(list.getName(i)), plain_text(list.getValue(i))});
    }

    void endElement(const XMLCh *const) override { ended_ = true; }

    void characters(const XMLCh *const text, const XMLSize_t length) override {
        if (!tag)
            return;
        XMLSize_t blanks = 0;
        while (blanks < length && (text[blanks] == u' ' || text[blanks] == u'\n' || text[blanks] == u'\t'))
            ++blanks;
        if (blanks == length) {
            tag.reset();
            value.reset();
        } else {
            value = plain_text(text);
        }
    }

    void resetDocument() override {
        errors = 0;
        tag.reset();
        value.reset();
    }

    void report(const char *kind, const xercesc::SAXParseException &problem) {
        std::cerr << '\n'
                  << kind << " at (file " << plain_text(problem.getSystemId()) << ", line "
                  << problem.getLineNumber() << ", char " << problem.getColumnNumber()
                  << "): " << plain_text(problem.getMessage()) << std::endl;
        ++errors;
    }
    void warning(const xercesc::SAXParseException &problem) override { report("Warning", problem); }
    void error(const xercesc::SAXParseException &problem) override { report("Error", problem); }
    void fatalError(const xercesc::SAXParseException &problem) override { report("Fatal Error", problem); }

    xml_platform platform_; // first, so that it is the last to go
    reader_form form_;
    char *source_;
    xercesc::SecurityManager limit_;
    std::unique_ptr<xercesc::MemBufInputSource> memory_;
    xercesc::SAXParser parser_;
    xercesc::XMLPScanToken token_;
    bool more_ = true;
    bool ended_ = false;
};

#endif
