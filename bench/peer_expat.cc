#include <climits>
#include <cstdio>
#include <memory>
#include <stdexcept>

#include <expat.h>

#include "channel_builder.h"
#include "peers.h"

namespace bench {

namespace {

/// Text comes in pieces; it is complete when another tag comes.
struct expat_walk {
    channel_builder builder;
    const channel_builder::element *open = nullptr;
    std::string text = {};

    void deliver() {
        if (open && !text.empty())
            builder.text(*open, text);
        text.clear();
    }
};

void start(void *user, const XML_Char *name, const XML_Char **attributes) {
    expat_walk &walk = *static_cast<expat_walk *>(user);
    walk.deliver();
    walk.open = walk.builder.find(name);
    if (walk.open)
        walk.builder.start(*walk.open, attributes[0] ? attributes[1] : nullptr);
}

void characters(void *user, const XML_Char *text, int length) {
    expat_walk &walk = *static_cast<expat_walk *>(user);
    if (walk.open && walk.open->text)
        walk.text.append(text, static_cast<std::size_t>(length));
}

void end(void *user, const XML_Char *) {
    expat_walk &walk = *static_cast<expat_walk *>(user);
    walk.deliver();
    walk.open = nullptr;
}

using parser_owner = std::unique_ptr<XML_ParserStruct, decltype(&XML_ParserFree)>;

parser_owner parser_for(expat_walk &walk) {
    parser_owner parser(XML_ParserCreate(nullptr), XML_ParserFree);
    XML_SetUserData(parser.get(), &walk);
    XML_SetElementHandler(parser.get(), start, end);
    XML_SetCharacterDataHandler(parser.get(), characters);
    return parser;
}

void require(XML_Status status) {
    if (status != XML_STATUS_OK)
        throw std::runtime_error("expat met an error");
}

void read_memory(const std::string &document, dialect form, channel_list &list) {
    if (document.size() > INT_MAX)
        throw std::runtime_error("too large for expat");
    expat_walk walk{channel_builder(list, form)};
    const parser_owner parser = parser_for(walk);
    require(XML_Parse(parser.get(), document.data(), static_cast<int>(document.size()), true));
}

void read_file(const char *path, dialect form, channel_list &list) {
    constexpr int block = 64 * 1024;
    const std::unique_ptr<FILE, int (*)(FILE *)> file(std::fopen(path, "r"), std::fclose);
    if (!file)
        throw std::runtime_error(std::string("cannot open ") + path);
    expat_walk walk{channel_builder(list, form)};
    const parser_owner parser = parser_for(walk);
    for (bool is_last = false; !is_last;) {
        const std::size_t got = std::fread(XML_GetBuffer(parser.get(), block), 1, block, file.get());
        is_last = got < block;
        require(XML_ParseBuffer(parser.get(), static_cast<int>(got), is_last));
    }
}

} // namespace

const channel_peer expat_reader = {"expat", read_memory, read_file};

} // namespace bench
