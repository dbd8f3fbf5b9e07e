#include "zeb5_gige_descr.h"

#include <cstdio>
#include <memory>
#include <new>
#include <optional>

#include <cxxabi.h>

#include <xercesc/dom/DOM.hpp>
#include <xercesc/parsers/XercesDOMParser.hpp>
#include <xercesc/sax/ErrorHandler.hpp>
#include <xercesc/util/OutOfMemoryException.hpp>
#include <xercesc/util/XMLException.hpp>

#include "limits/bounded_parser.h"
#include "readers/feature_collector.h"
#include "readers/feature_scan.h"
#include "readers/feature_tree.h"
#include "steps/narrow_text.h"
#include "steps/plain_file.h"
#include "steps/plain_file_source.h"
#include "xml_platform.h"

namespace {

using namespace xercesc;

using feature_vector = std::vector<ZEB5GigEFeature *>;

std::string message_of(const XMLException &problem) {
    const zeb5::transcoded text = zeb5::transcode(problem.getMessage());
    return text ? text.get() : "";
}

/// Notes the errors that the parser would otherwise drop silently. A warning is no error: the document was
/// read.
class error_watch : public ErrorHandler {
public:
    bool seen() const { return seen_; }

    void warning(const SAXParseException &) override {}
    void error(const SAXParseException &) override { seen_ = true; }
    void fatalError(const SAXParseException &) override { seen_ = true; }
    void resetErrors() override { seen_ = false; }

private:
    bool seen_ = false;
};

struct unreadable_file {};

void tell_out_of_memory() { std::printf("OutOfMemoryException\n"); }

void tell_parse_failed() {
    std::printf("An error occurred during parsing\n "); // Kept: a blank before the log's next line
}

/// Reads the open file, or else what the XML library finds under its name.
void parse_with(zeb5::bounded_parser<XercesDOMParser> &parser, const char *file_name,
                const zeb5::plain_file &file) {
    std::unique_ptr<InputSource> source;
    if (file.is_open())
        source = std::make_unique<zeb5::plain_file_source>(file_name, file, parser.memory);
    else
        source = parser.streams.source_of(file_name);
    if (source)
        parser.parse(zeb5::metered_source(*source, parser.streams));
    else
        parser.parse(file_name);
}

/// Returns a parser that holds the whole document, or null after a message.
std::unique_ptr<XercesDOMParser> parse_file(const char *file_name, const zeb5::plain_file &file) {
    error_watch errors; // outlives the parse but not the parser, which reports only while it parses
    try {
        auto parser = zeb5::create_parser<XercesDOMParser>(XercesDOMParser::Val_Never);
        parser->setErrorHandler(&errors);
        parser->setCreateEntityReferenceNodes(false);
        parse_with(*parser, file_name, file);
        parser->setErrorHandler(nullptr);
        if (errors.seen() || !parser->getDocument())
            throw unreadable_file{};
        return parser;
    } catch (const OutOfMemoryException &) {
        tell_out_of_memory();
    } catch (const XMLException &problem) {
        std::printf("An error occurred during parsing  Message: %s\n", message_of(problem).c_str());
    } catch (const DOMException &problem) {
        std::printf("\nDOM Error during parsing: '%s' DOMException code is: %d\n", file_name, problem.code);
        if (const auto message = zeb5::message_of(problem))
            std::printf("Message is: %s", message->c_str()); // Kept: no line end, as in older logs
    } catch (const abi::__forced_unwind &) {
        throw; // the thread is being cancelled
    } catch (...) {
        tell_parse_failed();
    }
    return nullptr;
}

/// Returns false after a message when memory runs out. What was found before stays.
bool walk(XercesDOMParser &parser, feature_vector &out) {
    try {
        // Kept: callers see no other failure of the walk
        (void)dump_nodes(parser.getDocument()->getChildNodes(), &out);
        return true;
    } catch (const OutOfMemoryException &) {
        tell_out_of_memory();
    } catch (const std::bad_alloc &) {
        tell_parse_failed();
    }
    return false;
}

} // namespace

ZEB5GigEFeature::ZEB5GigEFeature() : type(FEATURE_TYPE_UNDEF) {}

ZEB5GigEFeature::~ZEB5GigEFeature() = default;

bool zeb5_fill_gige_descr(char *file_name, feature_vector *out) {
    if (!file_name || !out)
        return true;
    const zeb5::plain_file file(file_name);
    std::optional<xml_platform> platform;
    try {
        const zeb5::scan_result scanned = zeb5::scan_features(file, *out);
        if (scanned == zeb5::scan_result::CHANGED)
            tell_parse_failed();
        if (scanned != zeb5::scan_result::NOT_PLAIN)
            return scanned != zeb5::scan_result::READ;
        platform.emplace();
    } catch (const OutOfMemoryException &) {
        tell_out_of_memory();
        return true;
    } catch (const std::bad_alloc &) {
        tell_parse_failed();
        return true;
    } catch (const XMLException &problem) {
        std::printf("Error during Xerces-c Initialization.  Exception message: %s\n",
                    zeb5::plain_message(problem).c_str());
        return true;
    }
    const auto parser = parse_file(file_name, file);
    if (!parser)
        return true;
    out->clear(); // Kept: the records are the caller's, who may still use them
    const bool failed = !walk(*parser, *out);
    zeb5::clear_markers(*out);
    return failed;
}

void zeb5_dump_gige_descr(const feature_vector *out) {
    if (!out)
        return;
    const int count = static_cast<int>(out->size());
    for (int number = 0; number < count; ++number) {
        const ZEB5GigEFeature *feature = (*out)[static_cast<std::size_t>(number)];
        // Kept: features without a name count too, as the numbers are places in the vector
        if (!feature || feature->name.empty())
            continue;
        if (feature->extension.empty())
            std::printf("[%d] Name:'%s' type:%d ToolTip:'%s' Description:'%s'\n", number,
                        feature->name.c_str(), feature->type, feature->tooltip.c_str(),
                        feature->description.c_str());
        else
            std::printf("[%d] Name:'%s' Extension:'%s' type:%d ToolTip:'%s' Description:'%s'\n", number,
                        feature->name.c_str(), feature->extension.c_str(), feature->type,
                        feature->tooltip.c_str(), feature->description.c_str());
    }
}

void zeb5_clean_gige_descr(feature_vector *out) {
    if (!out)
        return;
    for (const ZEB5GigEFeature *feature : *out)
        delete feature;
    out->clear();
}
