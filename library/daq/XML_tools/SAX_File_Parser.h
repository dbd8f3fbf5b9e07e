#ifndef ZEB5_SAX_FILE_PARSER_H
#define ZEB5_SAX_FILE_PARSER_H

/// Walks an XML document in a file one parser step at a time.
///
/// Steps, pieces of text, limits and threading are those of SAX_Memory_Parser; only construction and start
/// differ.

#include <cstdint>
#include <memory>
#include <vector>

#include <xercesc/framework/XMLPScanToken.hpp>
#include <xercesc/parsers/SAXParser.hpp>
#include <xercesc/sax/HandlerBase.hpp>
#include <xercesc/util/XMLString.hpp>

#include "zeb5_export.h"

namespace zeb5 {
struct sax_step_handlers;
}

/// One attribute of the current element, allocated with new. It owns its strings: each is released with
/// xercesc::XMLString::release() while the XML platform is up.
struct attrf {
    char *name;
    char *type; // as the parser reports it, "CDATA" for instance
    char *value;
};

/// Holds what the current step delivers. It owns the strings and records, which last until the step that
/// drops them. Whoever takes a record out of the array must release its strings and the record; tag and value
/// are strings of the same kind. The destructor releases what is left, and the XML platform must still be up
/// then.
class ZEB5_API FileParseHandlers : public xercesc::HandlerBase {
public:
    FileParseHandlers();
    ~FileParseHandlers() override;
    FileParseHandlers(const FileParseHandlers &) = delete;
    FileParseHandlers &operator=(const FileParseHandlers &) = delete;

    // Counts since the document began: start tags, their attributes, characters of text, ignorable white
    // space
    std::uint32_t getElementCount() const { return fElementCount; }
    std::uint32_t getAttrCount() const { return fAttrCount; }
    std::uint32_t getCharacterCount() const { return fCharacterCount; }
    std::uint32_t getSpaceCount() const { return fSpaceCount; }
    /// Warnings, errors and fatal errors since the document began.
    int getErrorCount() const { return error_count; }

    char *getTag() const { return tag; }     // null: no element is current
    char *getValue() const { return value; } // null: no text
    std::vector<attrf *> &getAttr() { return vattr; }
    void getTagValue(char **tag, char **value) const;
    // Release the string and set its pointer to null
    void resetTag() {
        if (tag)
            xercesc::XMLString::release(&tag);
    }
    void resetValue() {
        if (value)
            xercesc::XMLString::release(&value);
    }
    void resetTagValue();

    /// Drops tag, value and attributes if an end tag or a text was seen; a start tag that was just delivered
    /// stays.
    void reset_end_tag_flag();

    // What the parser calls
    void startElement(const XMLCh *const name, xercesc::AttributeList &attributes) override;
    void endElement(const XMLCh *const name) override;
    void characters(const XMLCh *const chars, const XMLSize_t length) override;
    void ignorableWhitespace(const XMLCh *const chars, const XMLSize_t length) override;
    void resetDocument() override;
    void resetErrors() override;
    void warning(const xercesc::SAXParseException &exception) override;
    void error(const xercesc::SAXParseException &exception) override;
    void fatalError(const xercesc::SAXParseException &exception) override;

private:
    friend struct zeb5::sax_step_handlers;

    std::uint32_t fElementCount = 0;
    std::uint32_t fAttrCount = 0;
    std::uint32_t fCharacterCount = 0;
    std::uint32_t fSpaceCount = 0;
    bool fSawErrors = false; // never set by anything
    char *tag = nullptr;
    char *value = nullptr;
    std::vector<attrf *> vattr;
    int error_count = 0;
    bool end_flag = false;
};

class ZEB5_API SAX_File_Parser {
public:
    /// A failed start of the XML platform is reported on standard error; init_ok() is false then.
    SAX_File_Parser();
    ~SAX_File_Parser();
    SAX_File_Parser(const SAX_File_Parser &) = delete;
    SAX_File_Parser &operator=(const SAX_File_Parser &) = delete;

    /// Whether the parser can be used.
    bool init_ok();

    /// Opens the file at `path` and reads up to the root element. Returns 0, or 1 with a message on standard
    /// error (none for a null path).
    int start(char *path);

    /// Takes one step. Sets `*tag` and `*value` to the name and text of the current element, or to null;
    /// either pointer may be null. Returns 0 for a step, -1 after the end of the document or when init_ok()
    /// is false, and the number of reports once the parser has reported anything, warnings included. Reports
    /// go to standard error. An exception when memory runs out ends the document, too. Throws a
    /// xercesc::XMLException when no start() has returned 0.
    int parse(char **tag, char **value);

    /// Looks up an attribute of the current element. Returns 0 and its value in `*res`, or -1 and null when
    /// there is none, `name` is null or the parser has reported anything.
    int get_attr(char *name, char **res);

    /// Number of warnings and errors reported so far.
    int get_error_counter();

private:
    friend struct zeb5::sax_step_handlers;

    bool init = false;
    bool gotMore = true;
    std::unique_ptr<xercesc::SAXParser> parser; // owns the XML platform, too, and all else that reading needs
    xercesc::XMLPScanToken token;
    FileParseHandlers handler;
};

#endif
