#include <climits>
#include <cstring>
#include <memory>
#include <stdexcept>

#include <libxml/tree.h>
#include <libxml/xmlreader.h>

#include "channel_builder.h"
#include "feature_collector.h"
#include "peers.h"

namespace bench {

namespace {

// Large files are refused without XML_PARSE_HUGE
constexpr int options = XML_PARSE_NONET | XML_PARSE_HUGE;

const char *chars(const xmlChar *text) { return reinterpret_cast<const char *>(text); }

using reader_owner = std::unique_ptr<xmlTextReader, decltype(&xmlFreeTextReader)>;

const char *first_attribute(xmlTextReaderPtr reader) {
    return xmlTextReaderMoveToFirstAttribute(reader) == 1 ? chars(xmlTextReaderConstValue(reader)) : nullptr;
}

void read(xmlTextReaderPtr new_reader, dialect form, channel_list &list) {
    const reader_owner reader(new_reader, xmlFreeTextReader);
    channel_builder builder(list, form);
    const channel_builder::element *open = nullptr;
    int result;
    while ((result = xmlTextReaderRead(reader.get())) == 1)
        switch (xmlTextReaderNodeType(reader.get())) {
        case XML_READER_TYPE_ELEMENT:
            open = builder.find(chars(xmlTextReaderConstName(reader.get())));
            if (open && open->start)
                open->start(builder, open->takes_attribute ? first_attribute(reader.get()) : nullptr);
            break;
        case XML_READER_TYPE_TEXT:
            if (open)
                builder.text(*open, chars(xmlTextReaderConstValue(reader.get())));
            break;
        case XML_READER_TYPE_END_ELEMENT:
            open = nullptr;
            break;
        default:
            break;
        }
    if (result != 0)
        throw std::runtime_error("libxml2 met an error");
}

void read_memory(const std::string &document, dialect form, channel_list &list) {
    if (document.size() > INT_MAX)
        throw std::runtime_error("too large for libxml2");
    read(xmlReaderForMemory(document.data(), static_cast<int>(document.size()), nullptr, nullptr, options),
         form, list);
}

void read_file(const char *path, dialect form, channel_list &list) {
    read(xmlReaderForFile(path, nullptr, options), form, list);
}

void walk(const xmlNode *node, feature_collector &features) {
    for (; node; node = node->next) {
        if (node->type != XML_ELEMENT_NODE)
            continue;
        const xmlAttr *const attribute = node->properties;
        const bool has_name =
            attribute && !std::strcmp(chars(attribute->name), "Name") && attribute->children;
        const bool has_text = node->children && node->children->type == XML_TEXT_NODE;
        features.take(chars(node->name), has_name ? chars(attribute->children->content) : "",
                      has_text ? chars(node->children->content) : "");
        walk(node->children, features);
    }
}

void read_camera(const char *path, feature_list &list) {
    const std::unique_ptr<xmlDoc, decltype(&xmlFreeDoc)> document(xmlReadFile(path, nullptr, options),
                                                                  xmlFreeDoc);
    if (!document)
        throw std::runtime_error("libxml2 met an error");
    feature_collector features(list);
    walk(xmlDocGetRootElement(document.get()), features);
}

} // namespace

const channel_peer libxml2_reader = {"libxml2 xmlTextReader", read_memory, read_file};
const camera_peer libxml2_camera = {"libxml2 tree", read_camera};

} // namespace bench
