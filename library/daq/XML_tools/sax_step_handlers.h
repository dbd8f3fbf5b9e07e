#ifndef ZEB5_SAX_STEP_HANDLERS_H
#define ZEB5_SAX_STEP_HANDLERS_H

/// What one step of a pull reader means, written once for the memory and the file variant.

#include <cstdint>
#include <cstring>
#include <iostream>
#include <memory>
#include <string_view>

#include <xercesc/framework/XMLPScanToken.hpp>
#include <xercesc/parsers/SAXParser.hpp>
#include <xercesc/sax/AttributeList.hpp>
#include <xercesc/sax/SAXParseException.hpp>
#include <xercesc/util/XMLException.hpp>

#include "attribute_texts.h"
#include "narrow_text.h"
#include "platform_hold.h"
#include "steps/plain_file_source.h"
#include "tag_memo.h"
#include "xml_hardening.h"
#include "xml_platform.h"

/// What is behind the tag and the value of a step; kept from step to step, so that most of them allocate
/// nothing.
template <class Attribute> struct sax_step_texts {
    zeb5::narrower narrower;
    zeb5::tag_memo tags;
    zeb5::tag_name tag;
    zeb5::narrow_buffer value;
    zeb5::attribute_texts<Attribute> attributes;
};

/// What a step delivers to the library's own readers; without a tag the rest means nothing.
struct sax_step {
    std::string_view tag;        // NUL-terminated; without data: none
    const char *value = nullptr; // null: none
    std::size_t value_length = 0;
    std::uint32_t element = 0; // number of the start tag

    std::string_view tag_text() const { return tag; }
    std::string_view value_text() const { return {value, value_length}; }
};

/// The handlers' callbacks and the parsers' steps; a friend of both twins.
struct sax_step_handlers {
    // Callbacks; Handlers is MemParseHandlers or FileParseHandlers

    /// `id` tells this name from the document's others; two of one id cost time only.
    template <class Handlers> static void start_element(Handlers &h, const XMLCh *name, std::size_t id) {
        h.texts->tag = h.texts->tags.find(name, id, h.texts->narrower);
        h.tag = h.texts->tag.text;
        ++h.fElementCount;
        h.vattr.clear();
    }

    template <class Handlers> static void end_element(Handlers &h) { h.end_flag = true; }

    template <class Handlers> static void take_attributes(Handlers &h, xercesc::AttributeList &attributes) {
        h.fAttrCount += static_cast<std::uint32_t>(attributes.getLength());
        h.texts->attributes.take(attributes, h.texts->narrower, h.vattr);
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
        if (h.end_flag || h.value)
            drop_step(h);
    }

    template <class Handlers> static void drop_step(Handlers &h) {
        h.tag = h.value = nullptr;
        h.vattr.clear();
        h.end_flag = false;
    }

    // Steps; Parser is SAX_Memory_Parser or SAX_File_Parser

    /// Brings the platform up; reports and returns false when that fails.
    template <class Parser> static bool open_platform(Parser &p) {
        try {
            p.platform = std::make_unique<xml_platform>();
            zeb5::platform_hold::keep_for_thread();
            return true;
        } catch (const xercesc::XMLException &problem) {
            report_failed_platform(problem);
            return false;
        }
    }

    static void report_failed_platform(const xercesc::XMLException &problem) {
        std::cerr << "Error during initialization! Message:\n" << zeb5::plain_message(problem) << std::endl;
    }

    template <class Parser> static std::uint32_t element_count(const Parser &p) {
        return p.handler.fElementCount;
    }

    /// Starts on a file that is open already.
    template <class Parser> static int start(Parser &p, const char *path, const zeb5::plain_file &file) {
        auto &bounded = static_cast<zeb5::bounded_parser<xercesc::SAXParser> &>(*p.parser); // as it was made
        return start(p, zeb5::plain_file_source(path, file, bounded.memory));
    }

    template <class Parser, class Source> static int start(Parser &p, const Source &source) {
        try {
            if (parse_first(*p.parser, source, p.token))
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

    /// Takes one step; the handlers hold what it delivers when the result is 0.
    template <class Parser> static int next(Parser &p) {
        auto &h = p.handler;
        reset_end_tag_flag(h);
        if (!p.gotMore)
            return h.error_count ? h.error_count : -1;
        try {
            p.gotMore = p.parser->parseNext(p.token);
        } catch (const xercesc::XMLException &) {
            throw; // the parser was not started, and says so each time
        } catch (...) {
            p.gotMore = false; // Xerces has let go of the document: one more step of it would be a crash
            throw;
        }
        if (!p.gotMore)
            p.parser->parseReset(p.token);
        return h.error_count;
    }

    /// What the last step delivered.
    template <class Parser> static sax_step current(const Parser &p) {
        const auto &h = p.handler;
        if (!h.tag)
            return {};
        return {{h.tag, h.texts->tag.length}, h.value, h.texts->value.size(), h.fElementCount};
    }

    template <class Parser> static int parse(Parser &p, char **tag, char **value) {
        // Before the step, as an exception may end it and what it drops must not be used any more
        if (tag)
            *tag = nullptr;
        if (value)
            *value = nullptr;
        const int result = p.init ? next(p) : -1;
        if (result == 0 && tag)
            *tag = p.handler.tag;
        if (result == 0 && value)
            *value = p.handler.value;
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
    static bool parse_first(xercesc::SAXParser &parser, const char *path, xercesc::XMLPScanToken &token) {
        auto &bounded = static_cast<zeb5::bounded_parser<xercesc::SAXParser> &>(parser); // as it was made
        const auto source = bounded.files.source_of(path);
        return source ? parser.parseFirst(*source, token) : parser.parseFirst(path, token);
    }
    static bool parse_first(xercesc::SAXParser &parser, const xercesc::InputSource &source,
                            xercesc::XMLPScanToken &token) {
        return parser.parseFirst(source, token);
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
