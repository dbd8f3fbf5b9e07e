/// The channel description writer beside a plain one that appends with "%d", "%e" and "%s", on random
/// records: texts of every length up to their whole field, numbers of every size, repeated properties, axes.

#include <cfloat>
#include <climits>
#include <cmath>
#include <cstdarg>
#include <cstdint>
#include <deque>
#include <random>
#include <set>

#include <fcntl.h>

#include "support/chan_descr_writing.h"
#include "support/element.h"

namespace {

// The plain writer

std::string print(const char *format, ...) {
    char text[2048];
    va_list values;
    va_start(values, format);
    vsnprintf(text, sizeof text, format, values);
    va_end(values);
    return text;
}

template <size_t N> std::string text_of(const char (&field)[N]) { return {field, strnlen(field, N)}; }
const std::string &text_of(const std::string &text) { return text; }
std::string text_of(std::int32_t number) { return print("%d", number); }
std::string text_of(std::uint32_t mask) { return print("%d", static_cast<std::int32_t>(mask)); }
std::string text_of(float number) { return print("%e", static_cast<double>(number)); }

std::string daq_name(const chan_descr_2010 &c) {
    return c.daq_name[0] ? text_of(c.daq_name) : "!!!UNDEFINED!!!";
}

template <class Value> std::string line(const std::string &tag, const Value &value) {
    return element_line(tag, text_of(value));
}
template <class Value> std::string line_if(bool wanted, const std::string &tag, Value value) {
    return wanted ? line(tag, value) : "";
}

std::string spectrum_lines(const zeb5_spect_header_2010 &s) {
    return line("DIM_START", s.start) + line("DIM_INC", s.inc) + line("DIM_NDATA", s.ndata) +
           line("DIM_GROUPS", s.groups) + line("DIM_GROUP_INC", s.group_inc);
}

std::string image_lines(const zeb5_image_ext_frame_head &h) {
    return line("DIM_XSTART", h.x_start) + line("DIM_WIDTH", h.aoi_width >= 1 ? h.aoi_width : h.width) +
           line_if(h.hbin > 0, "DIM_XBIN", h.hbin) + line("DIM_YSTART", h.y_start) +
           line("DIM_HEIGHT", h.aoi_height >= 1 ? h.aoi_height : h.height) +
           line_if(h.vbin > 0, "DIM_YBIN", h.vbin) + line_if(h.bpp > 0, "DIM_BPP", h.bpp) +
           line_if(h.ebitpp > 0, "DIM_EBITPP", h.ebitpp) +
           line_if(h.ispare4 != -1, "DIM_UNSIGNED", h.ispare4) +
           line_if(h.fspare2 > 0.0F, "DIM_START", h.fspare2) +
           line_if(h.fspare3 > 0.0F, "DIM_INC", h.fspare3) + line_if(h.ispare3 > 0, "DIM_NDATA", h.ispare3) +
           line_if(h.ispare2 > 0, "DIM_GROUPS", h.ispare2) +
           line_if(h.fspare4 > 0.0F, "DIM_GROUP_INC", h.fspare4);
}

std::string axis_lines(const dim_params *axes, int dim, size_t head) {
    std::string lines;
    if (axes && dim >= 0 && dim < axes->num) {
        lines += axes->params ? spectrum_lines(axes->params[dim]) : "";
        lines += axes->iparams ? image_lines(axes->iparams[head]) : "";
    }
    return lines;
}

std::string channel_lines(const chan_descr_2010 &c, size_t position, const dim_params *axes) {
    std::string lines = "<CHANNEL>\n" + line("STREAM", c.stream) + line("EVTYPE", c.ev_type) +
                        line("DTYPE", c.dtype) + line("DB_KEY", c.db_key) + line("COUNT", c.count) +
                        line("SB_NAME", c.sb_name) + line("PROP", c.prop_name) + line("NAME", daq_name(c)) +
                        line("SETPOINT", c.set_point) + line("SUBSYSTEM", c.subsystem) +
                        line("UNITS", c.units) + line("DESC", c.prop_desc) + line("SIZE", c.max_size);
    for (const bit_descr *b : c.bits)
        lines += "<BIT>" + text_of(b->bit) + "\n" + line("BIT_NAME", b->bit_name) +
                 line("BIT_DESCR", b->bit_desc) + "</BIT>\n";
    for (const dim_descr *d : c.dims) {
        lines += "<DIM>" + text_of(d->dim) + "\n" + line("DIM_NAME", d->dim_name) +
                 line("DIM_UNITS", d->units) + line("DIM_DESCR", d->dim_desc);
        for (const stat_descr *s : d->stats)
            lines += "<STAT>" + text_of(s->stat) + "\n" + line("STAT_NAME", s->stat_name) +
                     line("STAT_UNITS", s->units) + line("STAT_DESCR", s->stat_desc) + "</STAT>\n";
        lines += axis_lines(axes, d->dim, static_cast<size_t>(d->dim)) + "</DIM>\n";
    }
    for (std::int32_t j = 0; c.dims.empty() && axes && j < axes->num; ++j)
        lines += "<DIM>" + text_of(j) + "\n" + axis_lines(axes, j, position) + "</DIM>\n";
    return lines + "</CHANNEL>\n";
}

std::string variable_lines(const chan_descr_2010 &c) {
    const std::string kind = c.max_size != 1 ? "DaqFloatMatrix" : c.bits.empty() ? "DaqFloat" : "DaqBits";
    std::string lines = "<" + kind + ">\n" + line("evType", c.ev_type) + line("orvin", c.prop_name) +
                        line("daqName", daq_name(c)) + line("DBKey", c.db_key) +
                        line("setPoint", c.set_point) + line("sbName", c.sb_name) +
                        line("subSystem", c.subsystem) + line("description", c.prop_desc) +
                        line("units", c.units);
    if (c.max_size > 1)
        lines += line("firstIndex", 0) + line("lastIndex", c.max_size - 1);
    for (const bit_descr *b : c.bits)
        lines += "<bitTitle bit=\"" + text_of(b->bit) + "\">" + text_of(b->bit_desc) + "</bitTitle>\n";
    for (const dim_descr *d : c.dims)
        lines += "<dimension id=\"" + text_of(d->dim) + "\">\n" + line("name", d->dim_name) +
                 line("description", d->dim_desc) + line("units", d->units) + "</dimension>\n";
    const int structure = get_event_struct_type(static_cast<int>(c.ev_type));
    const bool own = structure == ZEB5_EV_STRUCT_LOCAL || structure == ZEB5_EV_STRUCT_ML;
    return lines + line("freq", own ? -1 : 1) + "</" + kind + ">\n";
}

using axes_list = std::vector<dim_params *>;

const dim_params *axes_of(const chan_descr_2010 &channel, const axes_list &all) {
    for (const dim_params *axes : all)
        if (axes->name && axes->num != 0 && (axes->params || axes->iparams) &&
            axes->name == daq_name(channel))
            return axes;
    return nullptr;
}

std::string plain_document(const std::vector<chan_descr_2010 *> &list, int format, const axes_list &axes) {
    std::string body;
    std::set<std::string> written;
    for (size_t i = 0; i < list.size(); ++i)
        if (written.insert(text_of(list[i]->prop_name)).second)
            body += format == daqvariables ? variable_lines(*list[i])
                                           : channel_lines(*list[i], i, axes_of(*list[i], axes));
    return format == daqvariables ? daqvariables_document(body) : chandescriptions_document(body);
}

// The records

class random_records {
public:
    explicit random_records(unsigned seed) : engine_(seed) {}

    chan_descr_2010 *channel() {
        auto *c = new chan_descr_2010;
        for (std::int32_t *field : {&c->stream, &c->count, &c->db_key, &c->max_size, &c->set_point})
            *field = number();
        c->ev_type = static_cast<std::uint32_t>(number());
        c->dtype = static_cast<std::uint32_t>(number());
        fill(c->prop_name);
        fill(c->daq_name);
        fill(c->prop_desc);
        fill(c->units);
        fill(c->sb_name);
        fill(c->subsystem);
        if (below(4) == 0)
            c->max_size = 1;
        if (below(4) == 0)
            c->daq_name[0] = '\0';
        for (unsigned i = below(4); i > 0; --i) {
            bit_descr *const bit = add_bit(c, number());
            fill(bit->bit_name);
            fill(bit->bit_desc);
        }
        for (unsigned i = below(4); i > 0; --i)
            add_random_dim(c);
        return c;
    }

    /// Axes for a channel, for "!!!UNDEFINED!!!", or such that are not used.
    dim_params axes(char *name) {
        const std::int32_t count = static_cast<std::int32_t>(below(4)) - 1;
        auto &spectra = spectra_.emplace_back(4);
        for (auto &s : spectra)
            s = {real(), real(), number(), number(), real()};
        auto &heads = heads_.emplace_back(64); // one for each position in the list
        for (auto &h : heads) {
            for (std::int32_t *field :
                 {&h.width, &h.height, &h.aoi_width, &h.aoi_height, &h.x_start, &h.y_start, &h.bpp, &h.ebitpp,
                  &h.hbin, &h.vbin, &h.ispare2, &h.ispare3, &h.ispare4})
                *field = number();
            for (float *field : {&h.fspare2, &h.fspare3, &h.fspare4})
                *field = real();
        }
        return {name, count, below(3) ? spectra.data() : nullptr, below(3) ? heads.data() : nullptr};
    }

    unsigned below(unsigned end) { return std::uniform_int_distribution<unsigned>(0, end - 1)(engine_); }

private:
    void add_random_dim(chan_descr_2010 *channel) {
        dim_descr *const dim = add_dim(channel, below(2) ? static_cast<int>(below(4)) : number());
        fill(dim->dim_name);
        fill(dim->dim_desc);
        fill(dim->units);
        for (unsigned i = below(3); i > 0; --i) {
            stat_descr *const stat = add_stat(dim, number());
            fill(stat->stat_name);
            fill(stat->stat_desc);
            fill(stat->units);
        }
    }

    /// Every digit count, both signs, both ends.
    std::int32_t number() {
        static constexpr std::int32_t edges[] = {INT_MIN, INT_MIN + 1, -10, -9, -1,  0,      1,
                                                 9,       10,          11,  99, 100, INT_MAX};
        if (below(2))
            return edges[below(std::size(edges))];
        return static_cast<std::int32_t>(engine_()) >> below(32);
    }

    float real() {
        static constexpr float edges[] = {0.0F,    -0.0F,    1.5F,         FLT_MAX, -FLT_MAX,
                                          FLT_MIN, INFINITY, FLT_TRUE_MIN, NAN,     0.1F};
        return edges[below(std::size(edges))];
    }

    /// Any length, whole field without its NUL included; behind the NUL stands what must not come out.
    template <size_t N> void fill(char (&field)[N]) {
        const size_t length = below(3) == 0 ? below(N + 1) : std::min<size_t>(below(20), N);
        for (char &c : field)
            c = static_cast<char>(1 + below(255));
        if (length < N)
            field[length] = '\0';
    }

    std::mt19937 engine_;
    std::deque<std::vector<zeb5_spect_header_2010>> spectra_;
    std::deque<std::vector<zeb5_image_ext_frame_head>> heads_;
};

/// A list with repeated properties, and axes of its channels.
struct random_case {
    explicit random_case(unsigned seed) : records(seed) {
        for (unsigned i = records.below(50); i > 0; --i) {
            chan_descr_2010 *const added = list.add(records.channel());
            if (records.below(5) == 0)
                memcpy(added->prop_name,
                       list.records[records.below(static_cast<unsigned>(list.records.size()))]->prop_name,
                       sizeof added->prop_name);
        }
        for (const chan_descr_2010 *channel : list.records)
            if (records.below(2))
                entries.push_back(records.axes(names.emplace_back(daq_name(*channel)).data()));
        entries.push_back(records.axes(nullptr));
        for (dim_params &entry : entries)
            axes.push_back(&entry);
    }

    random_records records;
    channel_list list;
    std::deque<std::string> names;
    std::deque<dim_params> entries;
    axes_list axes;
};

} // namespace

TEST(ChanDescrWriterPlain, ItsDocumentsAreThoseOfAPlainWriter) {
    for (unsigned seed = 0; seed < 400; ++seed) {
        random_case random(seed);
        for (int format : {chandescriptions, daqvariables}) {
            const std::string plain = plain_document(random.list.records, format, random.axes);
            EXPECT_TRUE(xml_of(random.list, format, &random.axes) == plain)
                << "seed " << seed << ' ' << format;
        }
    }
}

TEST(ChanDescrWriterPlain, EveryDestinationGetsThem) {
    for (unsigned seed = 0; seed < 40; ++seed)
        for (int format : {chandescriptions, daqvariables}) {
            SCOPED_TRACE("seed " + std::to_string(seed) + ", format " + std::to_string(format));
            random_case random(seed);
            const std::string plain = plain_document(random.list.records, format, random.axes);
            const std::string since = local_date();
            const temporary_file file, target;
            const int fd = open(target.path().c_str(), O_WRONLY | O_CLOEXEC);
            std::string text = seed % 2 ? "before" : "";
            text.reserve(seed % 4 < 2 ? 0 : 100000); // the memory of an empty string is written to
            const std::string before = text;

            EXPECT_EQ(dump(random.list, &file.path(), xml_document, format, -1, nullptr, &random.axes).result,
                      0);
            EXPECT_EQ(dump(random.list, nullptr, xml_document, format, fd, &text, &random.axes).result, 0);

            close(fd);
            EXPECT_TRUE((format == chandescriptions
                             ? without_date_line(file.text(), "CHANDESCRIPTIONS", since)
                             : file.text()) == plain);
            EXPECT_TRUE(target.text() == plain);
            EXPECT_TRUE(text == before + plain);
        }
}

// Room is made for a part at a time: none may be missing wherever a part begins.
TEST(ChanDescrWriterPlain, TheLargestRecordsHaveRoomAnywhereInADocument) {
    channel_list list;
    for (int i = 0; i < 64; ++i) {
        chan_descr_2010 *const c = list.add(make_channel(std::to_string(i).c_str()));
        for (std::int32_t *field : {&c->stream, &c->count, &c->db_key, &c->max_size, &c->set_point})
            *field = INT_MIN;
        const auto fill = [](auto &field) { memset(field, 'x', sizeof field); };
        memset(c->prop_name + strlen(c->prop_name), 'x', static_cast<size_t>(i)); // another place for each
        fill(c->daq_name);
        fill(c->prop_desc);
        fill(c->units);
        fill(c->sb_name);
        fill(c->subsystem);
        for (int k = 0; k < 40; ++k) {
            bit_descr *const bit = add_bit(c, INT_MIN + k);
            fill(bit->bit_name);
            fill(bit->bit_desc);
        }
    }
    for (int format : {chandescriptions, daqvariables})
        EXPECT_TRUE(xml_of(list, format) == plain_document(list.records, format, {})) << format;
}

TEST(ChanDescrWriterPlain, AStringKeepsNoMoreRoomThanTwiceItsText) {
    channel_list list;
    for (int i = 0; i < 200; ++i) {
        list.add(make_channel(std::to_string(i).c_str()));
        for (int format : {chandescriptions, daqvariables}) {
            std::string text;
            EXPECT_EQ(dump_chan_desr(list, nullptr, xml_document, format, -1, &text, nullptr), 0);
            EXPECT_LE(text.capacity(), 2 * text.size() + 1) << i;
        }
    }
}

// Properties are looked up by a hash of eight bytes at a time.
TEST(ChanDescrWriterPlain, PropertiesThatDifferInOneByteAreAllWrittenOnce) {
    channel_list list;
    const auto add = [&list](const std::string &prop) {
        auto *channel = new chan_descr_2010;
        memcpy(channel->prop_name, prop.data(), prop.size());
        list.add(channel);
    };
    for (size_t length = 0; length <= 256; ++length)
        add(std::string(length, 'a'));
    for (size_t at = 0; at < 40; ++at)
        for (char other : {'b', '\xFF', '\x01'})
            add(std::string(at, 'a') + other + std::string(39 - at, 'a'));
    const std::vector<chan_descr_2010 *> once = list.records;
    for (const chan_descr_2010 *channel : once)
        add(text_of(channel->prop_name));
    EXPECT_EQ(once.size(), 257U + 40U * 3U);
    std::string body;
    for (size_t i = 0; i < once.size(); ++i)
        body += channel_lines(*once[i], i, nullptr);
    EXPECT_TRUE(xml_of(list, chandescriptions) == chandescriptions_document(body));
}
