/// Random records are written, read and written again. Both documents must be the same where the format
/// promises it, and so must the records. All other outputs of the same records are made, too.

#include <algorithm>
#include <array>
#include <cstring>

#include "fuzz.h"
#include "support/channel_records.h"
#include "support/env_dictionary_records.h"

namespace {

enum { XML = 2, TO_STRING = 3 }; // values of `mode`
enum { CHANDESCRIPTIONS = 0, DAQVARIABLES = 1 };

/// Values made of the input's choices.
class values {
public:
    explicit values(fuzz_input &input) : input_(input) {}

    unsigned below(unsigned limit) { return input_.choice() % limit; }

    std::int32_t number() {
        std::uint32_t made = 0;
        for (unsigned bytes = below(5); bytes > 0; --bytes)
            made = made << 8 | input_.choice();
        return static_cast<std::int32_t>(made);
    }

    float real() {
        const std::int32_t bits = number();
        float made;
        memcpy(&made, &bits, sizeof made);
        return made;
    }

    /// Fills a field with what survives a document: writers do not escape, and texts of white space alone are
    /// none. Mostly short, at times as long as the field.
    template <std::size_t N> void text(char (&field)[N]) {
        const std::size_t length = below(8) == 0 ? N - 1 : std::min<std::size_t>(below(16), N - 1);
        for (std::size_t i = 0; i < length; ++i) {
            field[i] = static_cast<char>(' ' + input_.choice() % ('~' - ' ' + 1));
            if (field[i] == '&' || field[i] == '<' || field[i] == ']')
                field[i] = '\t';
        }
        if (std::string_view(field, length).find_first_not_of(" \t") == std::string_view::npos)
            field[0] = length > 0 ? 'x' : '\0';
    }

private:
    fuzz_input &input_;
};

void add_parts(values &from, chan_descr_2010 *channel) {
    for (unsigned bits = from.below(4); bits > 0; --bits) {
        bit_descr *bit = add_bit(channel, from.number());
        from.text(bit->bit_name);
        from.text(bit->bit_desc);
    }
    for (unsigned dims = from.below(4); dims > 0; --dims) {
        dim_descr *dim = add_dim(channel, from.number());
        from.text(dim->dim_name);
        from.text(dim->dim_desc);
        from.text(dim->units);
        for (unsigned stats = from.below(3); stats > 0; --stats) {
            stat_descr *stat = add_stat(dim, from.number());
            from.text(stat->stat_name);
            from.text(stat->stat_desc);
            from.text(stat->units);
        }
    }
}

void add_channel(values &from, channel_list &list) {
    chan_descr_2010 *channel = list.add(make_channel(""));
    from.text(channel->prop_name);
    if (!channel->prop_name[0])
        channel->prop_name[0] = 'P'; // without an identity it would not be read back
    from.text(channel->daq_name);
    from.text(channel->prop_desc);
    from.text(channel->units);
    from.text(channel->sb_name);
    from.text(channel->subsystem);
    channel->stream = from.number();
    channel->ev_type = static_cast<std::uint32_t>(from.number());
    channel->count = from.number();
    channel->dtype = static_cast<std::uint32_t>(from.number());
    channel->db_key = from.number();
    channel->max_size = from.number();
    channel->set_point = from.number();
    add_parts(from, channel);
}

template <class Part> void drop(std::vector<Part *> &parts, std::int32_t &count) {
    for (Part *part : parts)
        delete part;
    parts.clear();
    count = 0;
}

/// Leaves what the DAQvariables dialect carries both ways; of the parts, dimensions of a matrix only.
void leave_daq_fields(chan_descr_2010 *channel) {
    channel->stream = channel->count = 0;
    channel->dtype = 0;
    channel->db_key = -1;
    channel->sb_name[0] = '\0';
    channel->max_size = std::max(channel->max_size, 1);
    drop(channel->bits, channel->nbits);
    for (dim_descr *dim : channel->dims)
        drop(dim->stats, dim->nstats);
    if (channel->max_size == 1)
        drop(channel->dims, channel->ndims);
}

std::string written(channel_list &list, int format) {
    std::string text;
    expect(dump_chan_desr(list, nullptr, XML, format, -1, &text, nullptr) == 0, "channels are written");
    return text;
}

/// The records that a document holds: of several of one property the first.
std::string describe_written(const channel_list &list) {
    std::string text;
    for (const chan_descr_2010 *channel : list.records)
        if (find_chan_entry(&list.records, channel->prop_name) == channel)
            text += describe(*channel);
    return text;
}

void trip(channel_list &list, int format) {
    for (chan_descr_2010 *channel : list.records)
        if (!channel->daq_name[0])
            set_text(channel->daq_name, "!!!UNDEFINED!!!"); // what it is called in documents
    const std::string first = written(list, format);
    channel_list back;
    std::string text = first;
    expect(parse_descr_list_read(text.data(), back, false, false) == 0, "channels are read back");
    expect_same("channels", describe_written(list), describe_written(back));
    expect_same("channel documents", first, written(back, format));
}

/// All other outputs, with axes of random size; the arrays are as long as the writer may use them.
void write_elsewhere(values &from, channel_list &list) {
    static memory_file out;
    std::string sink;
    dim_params axes = {};
    axes.num = from.number() % 5;
    const std::size_t heads = std::max<std::size_t>(4, list.records.size());
    std::vector<zeb5_spect_header_2010> spectra(4, {from.real(), from.real(), from.number(), 1, 1});
    std::vector<zeb5_image_ext_frame_head> images(heads);
    for (zeb5_image_ext_frame_head &image : images) {
        image.width = image.hbin = image.bpp = from.number();
        image.aoi_height = image.ispare4 = image.ispare2 = from.number();
        image.fspare2 = image.fspare4 = from.real();
    }
    axes.params = from.below(2) ? spectra.data() : nullptr;
    axes.iparams = from.below(2) ? images.data() : nullptr;
    axes.name = list.records.empty() ? nullptr : list.records[0]->daq_name;
    std::vector<dim_params *> dims = {&axes};
    for (int mode = 0; mode < 5; ++mode)
        for (int format : {CHANDESCRIPTIONS, DAQVARIABLES})
            expect(dump_chan_desr(list, out.path(), mode, format, out.fd(), &sink, &dims) == 0,
                   "all is written");
    out.take();
}

/// A dictionary without the line that tells the time of writing.
template <class Layout> std::string written(dictionary<Layout> &list) {
    std::string text;
    expect(Layout::dump(&list.entries, nullptr, TO_STRING, -1, &text) == 0, "a dictionary is written");
    const std::size_t date = text.find("\t<isodate>");
    return text.erase(date, text.find('\n', date) + 1 - date);
}

/// The entries as precisely as a document tells them.
template <class Layout> std::string describe(const dictionary<Layout> &list) {
    std::string text;
    for (const auto *entry : list.entries)
        text += std::to_string(entry->index) + ' ' + quoted(entry->data.env_prop) + ' ' +
                std::to_string(entry->data.env_ch_abs_delta) + ' ' +
                std::to_string(entry->data.env_ch_rel_delta) + '\n';
    return text;
}

template <class Layout> void dictionary_trip(values &from) {
    dictionary<Layout> list, back;
    for (unsigned entries = from.below(5); entries > 0; --entries) {
        auto *entry = list.add(from.number(), "");
        from.text(entry->data.env_prop);
        if (!entry->data.env_prop[0])
            entry->data.env_prop[0] = 'P';
        entry->data.env_ch_abs_delta = from.real();
        entry->data.env_ch_rel_delta = from.real();
    }
    const std::string first = written(list);
    std::string text = first;
    expect(Layout::read_memory(text.data(), &back.entries) == 0, "a dictionary is read back");
    expect_same("entries", describe(list), describe(back));
    expect_same("dictionaries", first, written(back));
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
    hold_the_platform();
    fuzz_input input(data, size);
    values from(input);
    const unsigned kind = from.below(4);
    if (kind == 2) {
        dictionary_trip<classic_layout>(from);
    } else if (kind == 3) {
        dictionary_trip<layout_2010>(from);
    } else {
        channel_list list;
        for (unsigned channels = from.below(5); channels > 0; --channels)
            add_channel(from, list);
        write_elsewhere(from, list);
        if (kind == DAQVARIABLES)
            for (chan_descr_2010 *channel : list.records)
                leave_daq_fields(channel);
        trip(list, static_cast<int>(kind));
    }
    return 0;
}
