#ifndef ZEB5_SAX_STEP_HANDLERS_H
#define ZEB5_SAX_STEP_HANDLERS_H

/// What one step of a pull reader does, written once for the two pull readers and the parser of the readers.

#include <cstdint>
#include <cstring>
#include <iostream>
#include <memory>
#include <utility>

#include <xercesc/framework/XMLPScanToken.hpp>
#include <xercesc/parsers/SAXParser.hpp>
#include <xercesc/sax/AttributeList.hpp>
#include <xercesc/sax/HandlerBase.hpp>
#include <xercesc/sax/SAXParseException.hpp>
#include <xercesc/util/XMLException.hpp>

#include "limits/bounded_parser.h"
#include "steps/narrow_text.h"
#include "steps/plain_file_source.h"
#include "steps/platform_hold.h"
#include "xml_platform.h"

namespace zeb5 {

/// The handlers' callbacks and the parsers' steps; a friend of the memory and of the file classes.
struct sax_step_handlers {
    // Callbacks; Handlers is MemParseHandlers, FileParseHandlers or step_handlers

    template <class Handlers>
    static void start_element(Handlers &h, const XMLCh *name, const xercesc::AttributeList &attributes) {
        set(h.tag, name, xercesc::XMLString::stringLen(name));
        const XMLSize_t count = attributes.getLength();
        ++h.fElementCount;
        h.fAttrCount += static_cast<std::uint32_t>(count);
        drop_attributes(h);
        for (XMLSize_t i = 0; i < count; ++i)
            append_attribute(h.vattr, attributes, i);
    }

    template <class Handlers> static void characters(Handlers &h, const XMLCh *text, XMLSize_t length) {
        if (h.tag) {
            set(h.value, text, length);
            if (h.value && is_white_space(h.value, length))
                drop_texts(h);
        }
        h.fCharacterCount += static_cast<std::uint32_t>(length);
    }

    template <class Handlers> static void reset_document(Handlers &h) {
        h.fElementCount = h.fAttrCount = h.fCharacterCount = h.fSpaceCount = 0;
        h.error_count = 0;
        drop_texts(h);
    }

    /// `kind` is "Warning", "Error" or "Fatal Error".
    template <class Handlers>
    static void report(Handlers &h, const char *kind, const xercesc::SAXParseException &problem) {
        const transcoded file = transcode(problem.getSystemId());
        const transcoded message = transcode(problem.getMessage());
        // Kept: a null text sets the stream's fail state, as the stream's users see it for any null text
        std::cerr << '\n'
                  << kind << " at (file " << file.get() << ", line " << problem.getLineNumber() << ", char "
                  << problem.getColumnNumber() << "): " << message.get() << std::endl;
        ++h.error_count;
    }

    template <class Handlers> static void reset_end_tag_flag(Handlers &h) {
        if (!h.end_flag && !h.value)
            return;
        drop_texts(h);
        drop_attributes(h);
        h.end_flag = false;
    }

    // Strings and records. When nothing is left to release, the platform may be down.

    static void release(char *&text) {
        if (text)
            xercesc::XMLString::release(&text);
    }
    static void release(reused_text &text) { text.reset(); }

    static void set(char *&text, const XMLCh *from, XMLSize_t length) {
        release(text);
        text = zeb5::narrow(from, length);
    }
    static void set(reused_text &text, const XMLCh *from, XMLSize_t length) { text.set(from, length); }

    template <class Handlers> static void drop_texts(Handlers &h) {
        release(h.value);
        release(h.tag);
    }

    template <class Handlers> static void drop_attributes(Handlers &h) {
        for (auto *record : h.vattr)
            release_record()(record);
        h.vattr.clear();
    }

    // Steps; Parser is SAX_Memory_Parser, SAX_File_Parser or step_parser

    /// Starts the platform; returns null after a message when that fails.
    static std::unique_ptr<xml_platform> open_platform() {
        try {
            auto platform = std::make_unique<xml_platform>();
            platform_hold::keep_for_thread();
            return platform;
        } catch (const xercesc::XMLException &problem) {
            report_failed_platform(problem);
            return nullptr;
        }
    }

    static void report_failed_platform(const xercesc::XMLException &problem) {
        std::cerr << "Error during initialization! Message:\n" << plain_message(problem) << std::endl;
    }

    /// Returns a parser that holds the platform and reports to `handlers`, which must live as long as it
    /// parses.
    static std::unique_ptr<xercesc::SAXParser> create_parser(std::unique_ptr<xml_platform> platform,
                                                             xercesc::HandlerBase &handlers) {
        forget_local_code();
        auto parser = zeb5::create_parser<xercesc::SAXParser>(xercesc::SAXParser::Val_Auto);
        parser->setDocumentHandler(&handlers);
        parser->setErrorHandler(&handlers);
        parser->setDTDHandler(&handlers); // without one the parser is not told of entity declarations
        parser->platform = std::move(platform);
        return parser;
    }

    /// A file that is open already.
    struct opened_file {
        const char *path;
        const plain_file &file;
    };

    /// `source` is an input source, a path or an opened file.
    template <class Parser, class Source> static int start(Parser &p, const Source &source) {
        try {
            own_parser &parser = bounded(*p.parser);
            if (std::exchange(parser.is_under_way, false))
                parser.parseReset(p.token);
            parser.begin();
            parser.is_under_way = parse_first(parser, source, p.token);
            if (parser.is_under_way)
                return 0;
            std::cerr << "scanFirst() failed\n";
        } catch (const xercesc::XMLException &problem) {
            // Kept: operators know these words for files too
            std::cerr << "\nError during parsing memory stream:\n"
                      << "Exception message is:  \n"
                      << transcode(problem.getMessage()).get() << std::endl;
        }
        return 1;
    }

    /// Takes one step; the handlers hold what it delivers when the result is 0.
    template <class Parser> static int next(Parser &p) {
        auto &h = handlers_of(p);
        reset_end_tag_flag(h);
        if (!p.gotMore)
            return h.error_count ? h.error_count : -1;
        try {
            p.gotMore = p.parser->parseNext(p.token);
        } catch (const xercesc::XMLException &) {
            throw; // the parser was not started, and says so each time
        } catch (...) {
            // Xerces has closed the document: one more step would crash
            p.gotMore = bounded(*p.parser).is_under_way = false;
            throw;
        }
        if (!p.gotMore) {
            p.parser->parseReset(p.token);
            bounded(*p.parser).is_under_way = false;
        }
        return h.error_count;
    }

    /// `Text` is `char`, or `const char` for texts that nobody may take.
    template <class Parser, class Text> static int parse(Parser &p, Text **tag, Text **value) {
        // Set before the step: an exception may end it, and the strings that it drops must not be used any
        // more
        if (tag)
            *tag = nullptr;
        if (value)
            *value = nullptr;
        const int result = p.init ? next(p) : -1;
        if (result == 0 && tag)
            *tag = handlers_of(p).tag;
        if (result == 0 && value)
            *value = handlers_of(p).value;
        return result;
    }

    template <class Parser> static int get_attr(Parser &p, const char *name, char **res) {
        *res = nullptr;
        if (!p.init || !name || handlers_of(p).error_count)
            return -1;
        for (const auto *record : handlers_of(p).vattr)
            if (record->name && std::strcmp(record->name, name) == 0) {
                *res = record->value;
                return *res ? 0 : -1;
            }
        return -1;
    }

private:
    template <class Parser> static auto &handlers_of(Parser &p) {
        if constexpr (requires { *p.handler; })
            return *p.handler;
        else
            return p.handler;
    }

    /// Releases the record of an attribute.
    struct release_record {
        template <class Record> void operator()(Record *record) const {
            for (char **text : {&record->name, &record->type, &record->value})
                release(*text);
            delete record;
        }
    };

    template <class Record>
    static void append_attribute(std::vector<Record *> &list, const xercesc::AttributeList &attributes,
                                 XMLSize_t i) {
        std::unique_ptr<Record, release_record> record(new Record{});
        record->name = narrow(attributes.getName(i));
        record->type = narrow(attributes.getType(i));
        record->value = narrow(attributes.getValue(i));
        list.push_back(record.get());
        (void)record.release(); // the list owns it from here on
    }

    /// Whether a text begins with exactly `length` blanks, line feeds and tabs; true for an empty one.
    static bool is_white_space(const char *text, XMLSize_t length) {
        XMLSize_t i = 0;
        while (text[i] == ' ' || text[i] == '\n' || text[i] == '\t')
            ++i;
        return i == length;
    }

    static char *narrow(const XMLCh *text) { return zeb5::narrow(text, xercesc::XMLString::stringLen(text)); }

    using own_parser = bounded_parser<xercesc::SAXParser>;

    /// Returns the parser as create_parser() made it.
    static own_parser &bounded(xercesc::SAXParser &parser) { return static_cast<own_parser &>(parser); }

    static bool parse_first(own_parser &parser, const char *path, xercesc::XMLPScanToken &token) {
        const auto source = parser.streams.source_of(path);
        return source ? parse_first(parser, *source, token) : parser.parseFirst(path, token);
    }
    static bool parse_first(own_parser &parser, const opened_file &opened, xercesc::XMLPScanToken &token) {
        const plain_file_source source(opened.path, opened.file, parser.memory);
        return parse_first(parser, source, token);
    }
    static bool parse_first(own_parser &parser, const xercesc::InputSource &source,
                            xercesc::XMLPScanToken &token) {
        return parser.parseFirst(metered_source(source, parser.streams), token);
    }
};

} // namespace zeb5

#endif
