#ifndef ZEB5_SAX_MEMORY_PARSER_H
#define ZEB5_SAX_MEMORY_PARSER_H

/// Walks an XML document held in memory one parser step at a time.
///
/// Construct, check init_ok(), call start(), then parse() until it returns non-zero; get_attr() asks for
/// attributes of the current element. A step delivers:
///  - after a start tag: the tag and a null value
///  - after the text of the element: the tag and the text
///  - after white space, an end tag or anything else: what is left of the step before, normally two nulls
/// An element without text that has an end tag of its own is delivered twice.
///
/// Text comes in pieces: a new piece begins at every entity or character reference, at a CDATA section and
/// after about a million characters. The value of a step is its last piece.
///
/// Documents are self-contained: an external entity or DTD to which one refers is never opened, and the
/// reference is an error. A path is the caller's: Xerces opens one that looks like an address as an address.
///
/// A document that asks for far more work or memory than its length allows is refused with an error, and so
/// is one with more than 4,096 names of elements or with a content model of more than 512 names, groups and
/// marks. Honest documents stay far below; SECURITY.md has all limits. The caller limits the size of the
/// document itself. A thread needs 128 KB of stack to read any document.
///
/// Each parser reads one document, on one thread; parsers on several threads may run at the same time.

#include <cstdint>
#include <memory>
#include <vector>

#include <xercesc/framework/MemBufInputSource.hpp>
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
struct attr {
    char *name;
    char *type; // as the parser reports it, "CDATA" for instance
    char *value;
};

/// Holds what the current step delivers. It owns the strings and records, which last until the step that
/// drops them. Whoever takes a record out of the array must release its strings and the record; tag and value
/// are strings of the same kind. The destructor releases what is left, and the XML platform must still be up
/// then.
class ZEB5_API MemParseHandlers : public xercesc::HandlerBase {
public:
    MemParseHandlers();
    ~MemParseHandlers() override;
    MemParseHandlers(const MemParseHandlers &) = delete;
    MemParseHandlers &operator=(const MemParseHandlers &) = delete;

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
    std::vector<attr *> &getAttr() { return vattr; }
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
    void warning(const xercesc::SAXParseException &exception) override;
    void error(const xercesc::SAXParseException &exception) override;
    void fatalError(const xercesc::SAXParseException &exception) override;

private:
    friend struct zeb5::sax_step_handlers;

    std::uint32_t fElementCount = 0;
    std::uint32_t fAttrCount = 0;
    std::uint32_t fCharacterCount = 0;
    std::uint32_t fSpaceCount = 0;
    char *tag = nullptr;
    char *value = nullptr;
    std::vector<attr *> vattr;
    int error_count = 0;
    bool end_flag = false;
};

class ZEB5_API SAX_Memory_Parser {
public:
    /// `str`: the document, NUL-terminated. It is not copied and must outlive the parser. A failed start of
    /// the XML platform is reported on standard error; with a null `str` nothing is started. In both cases
    /// init_ok() is false.
    SAX_Memory_Parser(char *str);
    ~SAX_Memory_Parser();
    SAX_Memory_Parser(const SAX_Memory_Parser &) = delete;
    SAX_Memory_Parser &operator=(const SAX_Memory_Parser &) = delete;

    /// Whether the parser can be used.
    bool init_ok();

    /// Reads up to the root element. Returns 0, or 1 with a message on standard error.
    int start();

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
    std::unique_ptr<xercesc::MemBufInputSource> memBufIS;
    std::unique_ptr<xercesc::SAXParser> parser; // owns the XML platform, too, and all else that reading needs
    xercesc::XMLPScanToken token;
    std::unique_ptr<MemParseHandlers> handler;
};

#endif
