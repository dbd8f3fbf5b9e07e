#ifndef ZEB5_SAX_STEP_HANDLERS_H
#define ZEB5_SAX_STEP_HANDLERS_H

/// What one step of a pull reader means, written once for the memory and the file variant.

#include <cstring>
#include <iostream>
#include <memory>
#include <string_view>

#include <xercesc/framework/XMLPScanToken.hpp>
#include <xercesc/parsers/SAXParser.hpp>
#include <xercesc/sax/AttributeList.hpp>
#include <xercesc/sax/SAXParseException.hpp>
#include <xercesc/util/PlatformUtils.hpp>
#include <xercesc/util/XMLExceptMsgs.hpp>
#include <xercesc/util/XMLException.hpp>

#include "narrow_text.h"
#include "tag_memo.h"
#include "xml_hardening.h"
#include "xml_platform.h"

/// What is behind the tag and the value of a step; kept from step to step, so that most of them allocate
/// nothing.
struct sax_step_texts {
    zeb5::narrower narrower;
    zeb5::tag_memo tags;
    zeb5::tag_name tag;
    zeb5::narrow_buffer value;
};

/// What a step delivers to the library's own readers; without a tag the rest means nothing.
struct sax_step {
    zeb5::tag_name tag;
    const char *value = nullptr; // null: none
    std::size_t value_length = 0;

    std::string_view tag_text() const { return {tag.text, tag.length}; }
    std::string_view value_text() const { return {value, value_length}; }
};

/// The handlers' callbacks and the parsers' steps; a friend of both twins.
struct sax_step_handlers {
    // Callbacks; Handlers is MemParseHandlers or FileParseHandlers

    template <class Handlers>
    static void start_element(Handlers &h, const XMLCh *name, xercesc::AttributeList &attributes) {
        h.texts->tag = h.texts->tags.find(name, h.texts->narrower);
        h.tag = h.texts->tag.text;
        ++h.fElementCount;
        if (!h.vattr.empty() || attributes.getLength() != 0)
            take_attributes(h, attributes);
    }

    template <class Handlers> static void characters(Handlers &h, const XMLCh *text, XMLSize_t length) {
        if (h.tag) {
            if (is_white_space(text, length))
                h.tag = h.value = nullptr;
            else
                h.value = h.texts->narrower.narrow(text, length, h.texts->value);
        }
        h.fCharacterCount += static_cast<std::uint32_t>(length);
    }

    template <class Handlers> static void reset_document(Handlers &h) {
        h.fElementCount = h.fAttrCount = h.fCharacterCount = h.fSpaceCount = 0;
        h.error_count = 0;
        h.tag = h.value = nullptr;
    }

    /// `kind` is "Warning", "Error" or "Fatal Error".
    template <class Handlers>
    static void report(Handlers &h, const char *kind, const xercesc::SAXParseException &problem) {
        const zeb5::transcoded file = zeb5::transcode(problem.getSystemId());
        const zeb5::transcoded message = zeb5::transcode(problem.getMessage());
        // Kept: a null text sets the stream's fail state, as users of the stream see it with any null text
        std::cerr << '\n'
                  << kind << " at (file " << file.get() << ", line " << problem.getLineNumber() << ", char "
                  << problem.getColumnNumber() << "): " << message.get() << std::endl;
        ++h.error_count;
    }

    template <class Handlers> static void reset_end_tag_flag(Handlers &h) {
        if (!h.end_flag && !h.value)
            return;
        h.tag = h.value = nullptr;
        if (!h.vattr.empty())
            drop_attributes(h);
        h.end_flag = false;
    }

    template <class Handlers> static void drop_attributes(Handlers &h) {
        for (auto *record : h.vattr)
            delete_attribute(record);
        h.vattr.clear();
    }

    // Steps; Parser is SAX_Memory_Parser or SAX_File_Parser

    /// Brings the platform up; reports and returns false when that fails.
    template <class Parser> static bool open_platform(Parser &p) {
        try {
            p.platform = std::make_unique<xml_platform>();
            return true;
        } catch (const xercesc::XMLException &problem) {
            std::cerr << "Error during initialization! Message:\n"
                      << zeb5::plain_message(problem) << std::endl;
            return false;
        }
    }

    template <class Parser> static void create_parser(Parser &p) {
        p.parser = zeb5::create_parser<xercesc::SAXParser>(xercesc::SAXParser::Val_Auto);
        p.parser->setDocumentHandler(&p.handler);
        p.parser->setErrorHandler(&p.handler);
        p.parser->setDTDHandler(&p.handler); // without one the parser does not hear of entity declarations
    }

    template <class Parser, class Source> static int start(Parser &p, const Source &source) {
        try {
            refuse_folder(source);
            if (p.parser->parseFirst(source, p.token))
                return 0;
            std::cerr << "scanFirst() failed\n";
        } catch (const xercesc::XMLException &problem) {
            // Kept: operators know these words for files too
            std::cerr << "\nError during parsing memory stream:\n"
                      << "Exception message is:  \n"
                      << zeb5::transcode(problem.getMessage()).get() << std::endl;
        }
        return 1;
    }

    /// Takes one step; `step` is set when the result is 0.
    template <class Parser> static int next(Parser &p, sax_step &step) {
        auto &h = p.handler;
        reset_end_tag_flag(h);
        if (!p.gotMore)
            return h.error_count ? h.error_count : -1;
        p.gotMore = p.parser->parseNext(p.token);
        if (!p.gotMore)
            p.parser->parseReset(p.token);
        if (h.error_count)
            return h.error_count;
        step.tag.text = h.tag;
        if (h.tag) {
            step.tag.length = h.texts->tag.length;
            step.value = h.value;
            step.value_length = h.texts->value.size();
        }
        return 0;
    }

    template <class Parser> static int parse(Parser &p, char **tag, char **value) {
        sax_step step;
        const int result = p.init ? next(p, step) : -1;
        if (tag)
            *tag = result == 0 ? p.handler.tag : nullptr;
        if (value)
            *value = result == 0 ? p.handler.value : nullptr;
        return result;
    }

    template <class Parser> static int get_attr(Parser &p, const char *name, char **res) {
        auto &h = p.handler;
        *res = nullptr;
        if (!name || h.error_count)
            return -1;
        for (const auto *record : h.vattr)
            if (std::strcmp(record->name, name) == 0) {
                *res = record->value;
                return *res ? 0 : -1;
            }
        return -1;
    }

private:
    /// Apart from start_element(), as most elements of these documents have no attributes.
    template <class Handlers>
    [[gnu::noinline]] static void take_attributes(Handlers &h, xercesc::AttributeList &attributes) {
        drop_attributes(h);
        const XMLSize_t count = attributes.getLength();
        h.fAttrCount += static_cast<std::uint32_t>(count);
        for (XMLSize_t i = 0; i < count; ++i)
            add_attribute(h, attributes.getName(i), attributes.getType(i), attributes.getValue(i));
    }

    static void refuse_folder(const char *path) {
        if (zeb5::is_folder(path))
            ThrowXML(xercesc::XMLPlatformUtilsException, xercesc::XMLExcepts::File_CouldNotReadFromFile);
    }
    static void refuse_folder(const xercesc::InputSource &) {}

    template <class Handlers>
    static void add_attribute(Handlers &h, const XMLCh *name, const XMLCh *type, const XMLCh *value) {
        using record_pointer = typename std::remove_reference_t<decltype(h.vattr)>::value_type;
        using record_type = std::remove_pointer_t<record_pointer>;
        struct release {
            void operator()(record_type *record) const { delete_attribute(record); }
        };
        std::unique_ptr<record_type, release> record(new record_type{});
        record->name = copied(h, name);
        record->type = copied(h, type);
        record->value = copied(h, value);
        h.vattr.push_back(record.get());
        record.release();
    }

    template <class Record> static void delete_attribute(Record *record) {
        delete[] record->name;
        delete[] record->type;
        delete[] record->value;
        delete record;
    }

    /// Of our own making rather than the transcoder's, so that it may outlive the platform.
    template <class Handlers> static char *copied(Handlers &h, const XMLCh *text) {
        zeb5::narrow_buffer buffer;
        return h.texts->narrower.narrow(text, xercesc::XMLString::stringLen(text), buffer) ? buffer.release()
                                                                                           : nullptr;
    }

    /// Blanks, line feeds and tabs only; an empty text is too.
    static bool is_white_space(const XMLCh *text, XMLSize_t length) {
        XMLSize_t i = 0;
        while (text[i] == u' ' || text[i] == u'\n' || text[i] == u'\t')
            ++i;
        return i == length;
    }
};

#endif
