#include <charconv>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <stdexcept>

#include <libxml/xmlwriter.h>

#include "peers.h"

namespace bench {

namespace {

// The generated channels have neither bits nor statistics.

constexpr char channel_format[] = "<CHANNEL>\n"
                                  "<STREAM>%d</STREAM>\n"
                                  "<EVTYPE>%u</EVTYPE>\n"
                                  "<DTYPE>%u</DTYPE>\n"
                                  "<DB_KEY>%d</DB_KEY>\n"
                                  "<COUNT>%d</COUNT>\n"
                                  "<SB_NAME>%s</SB_NAME>\n"
                                  "<PROP>%s</PROP>\n"
                                  "<NAME>%s</NAME>\n"
                                  "<SETPOINT>%d</SETPOINT>\n"
                                  "<SUBSYSTEM>%s</SUBSYSTEM>\n"
                                  "<UNITS>%s</UNITS>\n"
                                  "<DESC>%s</DESC>\n"
                                  "<SIZE>%d</SIZE>\n";
constexpr char dim_format[] = "<DIM>%d\n"
                              "<DIM_NAME>%s</DIM_NAME>\n"
                              "<DIM_UNITS>%s</DIM_UNITS>\n"
                              "<DIM_DESCR>%s</DIM_DESCR>\n"
                              "</DIM>\n";

void write_with_fprintf(const channel_list &list, std::string &text) {
    char *memory = nullptr;
    std::size_t size = 0;
    FILE *const out = open_memstream(&memory, &size);
    if (!out)
        throw std::runtime_error("no memory stream");
    std::fprintf(out, "<?xml version=\"1.0\" encoding=\"ISO-8859-1\" ?>\n<CHANDESCRIPTIONS>\n");
    for (const chan_descr_2010 *c : list) {
        std::fprintf(out, channel_format, c->stream, c->ev_type, c->dtype, c->db_key, c->count, c->sb_name,
                     c->prop_name, c->daq_name, c->set_point, c->subsystem, c->units, c->prop_desc,
                     c->max_size);
        for (const dim_descr *dim : c->dims)
            std::fprintf(out, dim_format, dim->dim, dim->dim_name, dim->units, dim->dim_desc);
        std::fprintf(out, "</CHANNEL>\n");
    }
    std::fprintf(out, "</CHANDESCRIPTIONS>\n\n");
    std::fclose(out);
    text.append(memory, size);
    std::free(memory);
}

const xmlChar *chars(const char *text) { return reinterpret_cast<const xmlChar *>(text); }

class element_writer {
public:
    explicit element_writer(xmlTextWriterPtr out) : out_(out) {}

    void open(const char *name) { xmlTextWriterStartElement(out_, chars(name)); }
    void close() { xmlTextWriterEndElement(out_); }
    void text(const char *text) { xmlTextWriterWriteString(out_, chars(text)); }
    void element(const char *name, const char *text) {
        xmlTextWriterWriteElement(out_, chars(name), chars(text));
    }
    template <class Number> void element(const char *name, Number number) { element(name, digits(number)); }
    template <class Number> const char *digits(Number number) {
        *std::to_chars(digits_, digits_ + sizeof digits_ - 1, number).ptr = '\0';
        return digits_;
    }

private:
    xmlTextWriterPtr out_;
    char digits_[16];
};

void write_with_libxml2(const channel_list &list, std::string &text) {
    const std::unique_ptr<xmlBuffer, decltype(&xmlBufferFree)> buffer(xmlBufferCreate(), xmlBufferFree);
    std::unique_ptr<xmlTextWriter, decltype(&xmlFreeTextWriter)> writer(
        xmlNewTextWriterMemory(buffer.get(), 0), xmlFreeTextWriter);
    xmlTextWriterStartDocument(writer.get(), nullptr, "ISO-8859-1", nullptr);
    element_writer out(writer.get());
    out.open("CHANDESCRIPTIONS");
    for (const chan_descr_2010 *channel : list) {
        out.open("CHANNEL");
        out.element("STREAM", channel->stream);
        out.element("EVTYPE", channel->ev_type);
        out.element("DTYPE", channel->dtype);
        out.element("DB_KEY", channel->db_key);
        out.element("COUNT", channel->count);
        out.element("SB_NAME", channel->sb_name);
        out.element("PROP", channel->prop_name);
        out.element("NAME", channel->daq_name);
        out.element("SETPOINT", channel->set_point);
        out.element("SUBSYSTEM", channel->subsystem);
        out.element("UNITS", channel->units);
        out.element("DESC", channel->prop_desc);
        out.element("SIZE", channel->max_size);
        for (const dim_descr *dim : channel->dims) {
            out.open("DIM");
            out.text(out.digits(dim->dim));
            out.element("DIM_NAME", dim->dim_name);
            out.element("DIM_UNITS", dim->units);
            out.element("DIM_DESCR", dim->dim_desc);
            out.close();
        }
        out.close();
    }
    xmlTextWriterEndDocument(writer.get());
    writer.reset(); // flushes
    text.append(reinterpret_cast<const char *>(xmlBufferContent(buffer.get())),
                static_cast<std::size_t>(xmlBufferLength(buffer.get())));
}

} // namespace

const channel_writer_peer fprintf_writer = {"fprintf", write_with_fprintf};
const channel_writer_peer libxml2_writer = {"libxml2 xmlTextWriter", write_with_libxml2};

} // namespace bench
