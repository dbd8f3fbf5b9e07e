#include <stdexcept>

#include <pugixml.hpp>

#include "channel_builder.h"
#include "feature_collector.h"
#include "peers.h"

namespace bench {

namespace {

void require(const pugi::xml_parse_result &result) {
    if (!result)
        throw std::runtime_error(std::string("pugixml: ") + result.description());
}

void take_children(const pugi::xml_node &parent, channel_builder &builder) {
    for (const pugi::xml_node node : parent) {
        if (node.type() != pugi::node_element)
            continue;
        if (const channel_builder::element *const what = builder.find(node.name())) {
            builder.start(*what, what->takes_attribute ? node.first_attribute().value() : nullptr);
            if (what->text)
                builder.text(*what, node.child_value());
        }
        take_children(node, builder);
    }
}

void take_document(const pugi::xml_document &document, dialect form, channel_list &list) {
    channel_builder builder(list, form);
    take_children(document.document_element(), builder);
}

void read_memory(const std::string &text, dialect form, channel_list &list) {
    pugi::xml_document document;
    require(document.load_buffer(text.data(), text.size()));
    take_document(document, form, list);
}

void read_file(const char *path, dialect form, channel_list &list) {
    pugi::xml_document document;
    require(document.load_file(path));
    take_document(document, form, list);
}

struct feature_walk : pugi::xml_tree_walker {
    explicit feature_walk(feature_list &list) : features(list) {}

    bool for_each(pugi::xml_node &node) override {
        if (node.type() == pugi::node_element)
            features.take(node.name(), node.attribute("Name").value(), node.child_value());
        return true;
    }

    feature_collector features;
};

void read_camera(const char *path, feature_list &list) {
    pugi::xml_document document;
    require(document.load_file(path));
    feature_walk walk(list);
    document.traverse(walk);
}

void add(pugi::xml_node parent, const char *name, const char *text) {
    parent.append_child(name).append_child(pugi::node_pcdata).set_value(text);
}

template <class Number> void add_number(pugi::xml_node parent, const char *name, Number number) {
    add(parent, name, std::to_string(number).c_str());
}

struct string_output : pugi::xml_writer {
    explicit string_output(std::string &out) : text(out) {}
    void write(const void *data, std::size_t size) override {
        text.append(static_cast<const char *>(data), size);
    }

    std::string &text;
};

void write(const channel_list &list, std::string &text) {
    pugi::xml_document document;
    pugi::xml_node declaration = document.append_child(pugi::node_declaration);
    declaration.append_attribute("version") = "1.0";
    declaration.append_attribute("encoding") = "ISO-8859-1";
    pugi::xml_node root = document.append_child("CHANDESCRIPTIONS");
    for (const chan_descr_2010 *channel : list) {
        pugi::xml_node node = root.append_child("CHANNEL");
        add_number(node, "STREAM", channel->stream);
        add_number(node, "EVTYPE", channel->ev_type);
        add_number(node, "DTYPE", channel->dtype);
        add_number(node, "DB_KEY", channel->db_key);
        add_number(node, "COUNT", channel->count);
        add(node, "SB_NAME", channel->sb_name);
        add(node, "PROP", channel->prop_name);
        add(node, "NAME", channel->daq_name);
        add_number(node, "SETPOINT", channel->set_point);
        add(node, "SUBSYSTEM", channel->subsystem);
        add(node, "UNITS", channel->units);
        add(node, "DESC", channel->prop_desc);
        add_number(node, "SIZE", channel->max_size);
        for (const dim_descr *dim : channel->dims) {
            pugi::xml_node part = node.append_child("DIM");
            part.append_child(pugi::node_pcdata).set_value(std::to_string(dim->dim).c_str());
            add(part, "DIM_NAME", dim->dim_name);
            add(part, "DIM_UNITS", dim->units);
            add(part, "DIM_DESCR", dim->dim_desc);
        }
    }
    string_output out(text);
    document.save(out, "", pugi::format_raw, pugi::encoding_latin1);
}

} // namespace

const channel_peer pugixml_reader = {"pugixml", read_memory, read_file};
const camera_peer pugixml_camera = {"pugixml tree", read_camera};
const channel_writer_peer pugixml_writer = {"pugixml tree, saved", write};

} // namespace bench
