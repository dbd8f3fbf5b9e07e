#include <algorithm>
#include <bit>
#include <cerrno>
#include <cstdio>
#include <iostream>
#include <memory>
#include <string_view>
#include <unordered_map>
#include <utility>

#include <unistd.h>

#include "chan_descr_parts.h"
#include "chan_descr_tags.h"
#include "name_hash.h"
#include "name_index.h"
#include "narrow_text.h"
#include "parse_chan_descr.h"
#include "xml_text.h"

namespace {

using namespace zeb5;

enum write_mode { FULL_TABLE = 1, XML_DOCUMENT = 2, SUMMARY_TABLE = 3 };
enum dialect { CHANDESCRIPTIONS = 0, DAQ_VARIABLES = 1, DIALECTS };

/// Position of a record in the list, skipped duplicates included.
using list_position = std::uint32_t;

using name_field = decltype(chan_descr_2010::daq_name);

const name_field &daq_name(const chan_descr_2010 &channel) {
    static constexpr name_field undefined = "!!!UNDEFINED!!!";
    return channel.daq_name[0] ? channel.daq_name : undefined;
}

// Tags, each put together when the library is compiled

template <tag_number Number, tag_level Level = OF_CHANNEL> constexpr element_tags tag(tags[Number][Level]);

template <const char *Name> constexpr element_tags daq_tag(Name);

// Axes of spectra and images, given beside the records

enum parameter_number {
    DIM_START,
    DIM_INC,
    DIM_NDATA,
    DIM_GROUPS,
    DIM_GROUP_INC,
    DIM_XSTART,
    DIM_WIDTH,
    DIM_YSTART,
    DIM_XBIN,
    DIM_HEIGHT,
    DIM_YBIN,
    DIM_BPP,
    DIM_EBITPP,
    DIM_UNSIGNED,
    DIM_PARAMETERS
};

constexpr const char *tagspectprms[] = {
    "DIM_START",  "DIM_INC",  "DIM_NDATA",  "DIM_GROUPS", "DIM_GROUP_INC", "DIM_XSTART", "DIM_WIDTH",
    "DIM_YSTART", "DIM_XBIN", "DIM_HEIGHT", "DIM_YBIN",   "DIM_BPP",       "DIM_EBITPP", "DIM_UNSIGNED",
};
static_assert(sizeof tagspectprms / sizeof tagspectprms[0] == DIM_PARAMETERS, "one name for each");

template <parameter_number Number> constexpr element_tags parameter_tag(tagspectprms[Number]);

void write_spectrum(xml_text &out, const zeb5_spect_header_2010 &axis) {
    out.put_float(parameter_tag<DIM_START>, axis.start, "%e");
    out.put_float(parameter_tag<DIM_INC>, axis.inc, "%e");
    out.put(element<parameter_tag<DIM_NDATA>>(axis.ndata), element<parameter_tag<DIM_GROUPS>>(axis.groups));
    out.put_float(parameter_tag<DIM_GROUP_INC>, axis.group_inc, "%e");
}

template <parameter_number Number> void element_if(bool wanted, xml_text &out, std::int32_t value) {
    if (wanted)
        out.put(element<parameter_tag<Number>>(value));
}

template <parameter_number Number> void element_if_positive(xml_text &out, float value) {
    if (value > 0.0F)
        out.put_float(parameter_tag<Number>, value, "%e");
}

template <parameter_number Number> void element_if_positive(xml_text &out, std::int32_t value) {
    element_if<Number>(value > 0, out, value);
}

void write_image(xml_text &out, const zeb5_image_ext_frame_head &head) {
    out.put(element<parameter_tag<DIM_XSTART>>(head.x_start),
            element<parameter_tag<DIM_WIDTH>>(head.aoi_width >= 1 ? head.aoi_width : head.width));
    element_if_positive<DIM_XBIN>(out, head.hbin);
    out.put(element<parameter_tag<DIM_YSTART>>(head.y_start),
            element<parameter_tag<DIM_HEIGHT>>(head.aoi_height >= 1 ? head.aoi_height : head.height));
    element_if_positive<DIM_YBIN>(out, head.vbin);
    element_if_positive<DIM_BPP>(out, head.bpp);
    element_if_positive<DIM_EBITPP>(out, head.ebitpp);
    element_if<DIM_UNSIGNED>(head.ispare4 != -1, out, head.ispare4);
    element_if_positive<DIM_START>(out, head.fspare2);
    element_if_positive<DIM_INC>(out, head.fspare3);
    element_if_positive<DIM_NDATA>(out, head.ispare3);
    element_if_positive<DIM_GROUPS>(out, head.ispare2);
    element_if_positive<DIM_GROUP_INC>(out, head.fspare4);
}

/// The axes of each channel, by its DAQ name.
class axes_of_channels {
public:
    explicit axes_of_channels(const std::vector<dim_params *> *entries) {
        if (!entries)
            return;
        for (const dim_params *axes : *entries)
            if (axes->name && axes->num != 0 && (axes->params || axes->iparams))
                by_name_.try_emplace(axes->name, axes); // the first one of a name counts
    }

    const dim_params *find(const name_field &name) const {
        if (by_name_.empty())
            return nullptr; // saves the hash
        const auto found = by_name_.find(field_text(name));
        return found == by_name_.end() ? nullptr : found->second;
    }

private:
    std::unordered_map<std::string_view, const dim_params *, seeded_name_hash> by_name_; // names of documents
};

/// The axis of one of the channel's own dimensions, by its number; none for a number that the entry does not
/// have.
void write_axis(xml_text &out, const dim_params &axes, std::int32_t dim) {
    if (dim < 0 || dim >= axes.num)
        return;
    // Kept: a dimension with both gives the elements of the axis twice; programs that draw spectra take the
    // first
    if (axes.params)
        write_spectrum(out, axes.params[dim]);
    if (axes.iparams)
        write_image(out, axes.iparams[dim]);
}

// The CHANDESCRIPTIONS dialect

void write_bit(xml_text &out, const bit_descr &bit) {
    out.make_room();
    out.put(opening<tag<TAG_PART>>(bit.bit), element<tag<TAG_PART_NAME>>(bit.bit_name),
            element<tag<TAG_PART_DESCR>>(bit.bit_desc));
    out.close(tag<TAG_PART>);
}

void write_stat(xml_text &out, const stat_descr &stat) {
    out.make_room();
    out.put(opening<tag<TAG_PART, OF_STAT>>(stat.stat), element<tag<TAG_PART_NAME, OF_STAT>>(stat.stat_name),
            element<tag<TAG_UNITS, OF_STAT>>(stat.units),
            element<tag<TAG_PART_DESCR, OF_STAT>>(stat.stat_desc));
    out.close(tag<TAG_PART, OF_STAT>);
}

void write_dim(xml_text &out, const dim_descr &dim, const dim_params *axes) {
    out.make_room();
    out.put(opening<tag<TAG_PART, OF_DIM>>(dim.dim), element<tag<TAG_PART_NAME, OF_DIM>>(dim.dim_name),
            element<tag<TAG_UNITS, OF_DIM>>(dim.units), element<tag<TAG_PART_DESCR, OF_DIM>>(dim.dim_desc));
    for_each_part(dim.stats, [&](const stat_descr &stat) { write_stat(out, stat); });
    out.make_room();
    if (axes)
        write_axis(out, *axes, dim.dim);
    out.close(tag<TAG_PART, OF_DIM>);
}

/// Dimensions of a channel that has axes but describes none.
void write_made_up_dims(xml_text &out, const dim_params &axes, list_position position) {
    for (std::int32_t j = 0; j < axes.num; ++j) {
        out.make_room();
        out.put(opening<tag<TAG_PART, OF_DIM>>(j));
        if (axes.params)
            write_spectrum(out, axes.params[j]);
        // Kept: the head of the channel's place in the list, the same for every dimension; callers lay them
        // out so
        if (axes.iparams)
            write_image(out, axes.iparams[position]);
        out.close(tag<TAG_PART, OF_DIM>);
    }
}

void write_chan_descr(xml_text &out, const chan_descr_2010 &channel, list_position position,
                      const axes_of_channels &all_axes) {
    out.make_room();
    out.open(tag<TAG_CHANNEL>);
    out.put(element<tag<TAG_STREAM>>(channel.stream), element<tag<TAG_EVTYPE>>(channel.ev_type),
            element<tag<TAG_DTYPE>>(channel.dtype), element<tag<TAG_DB_KEY>>(channel.db_key),
            element<tag<TAG_COUNT>>(channel.count), element<tag<TAG_SB_NAME>>(channel.sb_name),
            element<tag<TAG_PROP>>(channel.prop_name), element<tag<TAG_NAME>>(daq_name(channel)),
            element<tag<TAG_SETPOINT>>(channel.set_point), element<tag<TAG_SUBSYSTEM>>(channel.subsystem),
            element<tag<TAG_UNITS>>(channel.units), element<tag<TAG_DESC>>(channel.prop_desc),
            element<tag<TAG_SIZE>>(channel.max_size));
    for_each_part(channel.bits, [&](const bit_descr &bit) { write_bit(out, bit); });
    const dim_params *const axes = all_axes.find(daq_name(channel));
    for_each_part(channel.dims, [&](const dim_descr &dim) { write_dim(out, dim, axes); });
    if (channel.dims.empty() && axes)
        write_made_up_dims(out, *axes, position);
    out.make_room();
    out.close(tag<TAG_CHANNEL>);
}

// The DAQvariables dialect

const element_tags &daq_element(const chan_descr_2010 &channel) {
    if (channel.max_size != 1)
        return daq_tag<daq_tags::matrix_channel>;
    return channel.bits.empty() ? daq_tag<daq_tags::float_channel> : daq_tag<daq_tags::bits_channel>;
}

bool has_own_frequency(std::uint32_t ev_type) {
    // Kept: the whole mask is asked for, as if it were one event type; sites answer for it
    const auto is_of = [mask = static_cast<int>(ev_type)](int type) {
        return get_event_struct_type(mask) == type;
    };
    return is_of(ZEB5_EV_STRUCT_LOCAL) || is_of(ZEB5_EV_STRUCT_ML);
}

struct daq_bit_number {
    static constexpr short_piece start = short_piece({"<", daq_tags::bit, " ", daq_tags::bit_number, "=\""});
    static constexpr short_piece end = short_piece({"\">"});
};

struct daq_bit_text {
    static constexpr short_piece start = short_piece({});
    static constexpr short_piece end = daq_tag<daq_tags::bit>.end;
};

void write_daq_bit(xml_text &out, const bit_descr &bit) {
    out.make_room();
    // Kept: readers take the description for the bit's name, the name itself is not written
    out.put(framed<daq_bit_number>(bit.bit), framed<daq_bit_text>(bit.bit_desc));
}

struct daq_dim_number {
    static constexpr short_piece start = short_piece({"<", daq_tags::dim, " ", daq_tags::dim_id, "=\""});
    static constexpr short_piece end = short_piece({"\">\n"});
};

void write_daq_dim(xml_text &out, const dim_descr &dim) {
    out.make_room();
    out.put(framed<daq_dim_number>(dim.dim), element<daq_tag<daq_tags::dim_name>>(dim.dim_name),
            element<daq_tag<daq_tags::description>>(dim.dim_desc),
            element<daq_tag<daq_tags::units>>(dim.units));
    out.close(daq_tag<daq_tags::dim>);
}

void write_daq_variable(xml_text &out, const chan_descr_2010 &channel) {
    out.make_room();
    out.open(daq_element(channel));
    out.put(element<daq_tag<daq_tags::ev_type>>(channel.ev_type),
            element<daq_tag<daq_tags::prop>>(channel.prop_name),
            element<daq_tag<daq_tags::daq_name>>(daq_name(channel)),
            element<daq_tag<daq_tags::db_key>>(channel.db_key),
            element<daq_tag<daq_tags::set_point>>(channel.set_point),
            element<daq_tag<daq_tags::sb_name>>(channel.sb_name),
            element<daq_tag<daq_tags::subsystem>>(channel.subsystem),
            element<daq_tag<daq_tags::description>>(channel.prop_desc),
            element<daq_tag<daq_tags::units>>(channel.units));
    if (channel.max_size > 1) {
        out.put(element<daq_tag<daq_tags::first_index>>(0),
                element<daq_tag<daq_tags::last_index>>(channel.max_size - 1));
    }
    for_each_part(channel.bits, [&](const bit_descr &bit) { write_daq_bit(out, bit); });
    for_each_part(channel.dims, [&](const dim_descr &dim) { write_daq_dim(out, dim); });
    out.make_room();
    out.put(element<daq_tag<daq_tags::freq>>(has_own_frequency(channel.ev_type) ? -1 : 1));
    out.close(daq_element(channel));
}

// The text tables. A file that does not take all of it is not reported: what got through of a table is of
// use.

void write_table_row(FILE *out, const chan_descr_2010 &channel) {
    std::fprintf(out, "%d\t%d\t%s\t%s\t%d\t\"%s\"\t\"%s\"\t%d\t%d\t%d\n", channel.stream,
                 static_cast<std::int32_t>(channel.ev_type), daq_name(channel), channel.prop_name,
                 channel.set_point, channel.prop_desc, channel.units, channel.max_size, channel.nbits,
                 channel.ndims);
    for_each_part(channel.bits, [out](const bit_descr &bit) {
        std::fprintf(out, "%d\t%s\t\"%s\"\n", bit.bit, bit.bit_name, bit.bit_desc);
    });
    for_each_part(channel.dims, [out](const dim_descr &dim) {
        std::fprintf(out, "%d\t%s\t\"%s\"\t\"%s\"\n", dim.dim, dim.dim_name, dim.units, dim.dim_desc);
        std::fprintf(out, "%d\n", dim.nstats);
        for_each_part(dim.stats, [out](const stat_descr &stat) {
            std::fprintf(out, "%d\t%s\t\"%s\"\t\"%s\"\n", stat.stat, stat.stat_name, stat.units,
                         stat.stat_desc);
        });
    });
}

void write_summary_row(FILE *out, const chan_descr_2010 &channel) {
    const char *block = "UNKNOWN";
    if (channel.dtype != 0) {
        block = block_name_itoa(std::countr_zero(channel.dtype));
        std::cout << std::endl; // Kept: operators' scripts count these empty lines
    }
    std::fprintf(out, "%50s\t%d\t%s\n", daq_name(channel), channel.max_size, block);
}

// Has the processor fetch what comes next while it writes. Where the records are not in its cache, from some
// ten thousand on, this takes a quarter of the time off; it costs an eighth of the instructions.

void fetch_ahead(const chan_descr_2010 &channel) {
    constexpr std::size_t line = 64;
    const char *const bytes = reinterpret_cast<const char *>(&channel);
    for (std::size_t i = 0; i < sizeof channel; i += line)
        __builtin_prefetch(bytes + i);
}

/// Not all of them: a channel may have thousands, and stand in the list as often, to be written once.
void fetch_dims_ahead(const chan_descr_2010 &channel) {
    constexpr std::size_t most = 16;
    const std::size_t count = std::min(channel.dims.size(), most);
    for (std::size_t i = 0; i < count; ++i) {
        const dim_descr *const dim = channel.dims[i];
        if (!dim)
            continue;
        __builtin_prefetch(dim);
        __builtin_prefetch(dim->dim_desc);
        __builtin_prefetch(&dim->stats);
    }
}

/// One call of the writer.
class list_writer {
public:
    list_writer(const std::vector<chan_descr_2010 *> &list, int mode, int format, FILE *file,
                const std::vector<dim_params *> *dims)
        : list_(list), mode_(mode), format_(format), file_(file),
          axes_(mode == XML_DOCUMENT && format == CHANDESCRIPTIONS ? dims : nullptr) {}

    void write_tables() {
        xml_text no_body;
        write_records(no_body);
    }

    /// The whole document, in the memory of `text` where that is enough.
    std::string document(std::string text) {
        const bool is_daq = format_ == DAQ_VARIABLES;
        const element_tags &root = is_daq ? daq_tag<daq_tags::root> : tag<TAG_ROOT>;
        std::string declaration;
        set_xml_header(declaration);
        std::string date;
        if (!is_daq && file_)
            add_iso_date(date);
        xml_text out(std::move(text), 512 * list_.size()); // a record has 250 bytes and its texts
        out.make_room();
        out.put(declaration);
        out.open(root);
        out.put(date);
        write_records(out);
        out.make_room();
        out.close(root);
        out.line_end();
        return out.take();
    }

private:
    /// Writes every record once; the tables to the file, the XML body to `body`.
    void write_records(xml_text &body) {
        name_index<chan_descr_2010, &chan_descr_2010::prop_name> written(list_, list_.size());
        const std::size_t count = list_.size();
        for (list_position i = 0; i < count; ++i) {
            if (i + 4 < count)
                fetch_ahead(*list_[i + 4]);
            if (i + 1 < count)
                fetch_dims_ahead(*list_[i + 1]);
            if (written.add(i))
                write_record(body, *list_[i], i);
        }
    }

    void write_record(xml_text &body, const chan_descr_2010 &channel, list_position position) {
        if (mode_ == FULL_TABLE && file_)
            write_table_row(file_, channel);
        else if (mode_ == SUMMARY_TABLE && file_)
            write_summary_row(file_, channel);
        else if (mode_ == XML_DOCUMENT && format_ == DAQ_VARIABLES)
            write_daq_variable(body, channel);
        else if (mode_ == XML_DOCUMENT)
            write_chan_descr(body, channel, position, axes_);
    }

    const std::vector<chan_descr_2010 *> &list_;
    int mode_;
    int format_;
    FILE *file_; // null: none
    axes_of_channels axes_;
};

struct file_close {
    // A file that does not take all of what is written to it is not reported, neither here nor at each
    // write: the writer tells only of what it could not open or send
    void operator()(FILE *file) const { std::fclose(file); }
};

} // namespace

int dump_chan_desr(std::vector<chan_descr_2010 *> *chdscr_list, char *file_name, int mode, int format, int fd,
                   std::string *sout, std::vector<dim_params *> *dims) {
    if (!chdscr_list || format < 0 || format >= DIALECTS) {
        // Kept: operators know it with one quote
        std::cout << "dump_chan_desr() invalid argument: '" << std::endl;
        return 2;
    }
    std::unique_ptr<FILE, file_close> file;
    if (file_name && *file_name) {
        file.reset(std::fopen(file_name, "w"));
        if (!file) {
            const int why = errno; // the message must not change it
            std::cout << "dump_chan_desr() failed to open file: '" << file_name << "'" << std::endl;
            errno = why;
            std::perror("fopen");
            return 1;
        }
    }
    if (!file && fd == -1 && !sout) {
        // Kept: in every mode, as people try out a list from a debugger
        if (!chdscr_list->empty())
            print_zeb5_chan_descr(chdscr_list);
        return 0;
    }
    list_writer writer(*chdscr_list, mode, format, file.get(), dims);
    if (mode != XML_DOCUMENT) {
        writer.write_tables();
        return 0;
    }
    // An empty string gives its memory and gets the document without a copy
    const bool is_empty = sout && sout->empty();
    std::string document = writer.document(is_empty ? std::exchange(*sout, {}) : std::string());
    if (file)
        (void)std::fwrite(document.data(), 1, document.size(), file.get()); // see file_close
    // Kept: a short write is not noticed, and the message has two blanks, as log scanners look for it
    if (fd != -1 && write(fd, document.data(), document.size()) == -1) {
        std::cout << "dump_chan_desr()  write failed" << std::endl;
        // Kept: the file stays open, as always in this case; what was written to it is there to be read
        if (FILE *const open = file.release())
            std::fflush(open);
        return 2;
    }
    if (is_empty)
        *sout = std::move(document);
    else if (sout)
        sout->append(document);
    return 0;
}
