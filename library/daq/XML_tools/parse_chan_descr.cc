#include "parse_chan_descr.h"

#include <cstdint>
#include <cstdio>
#include <iostream>
#include <optional>
#include <string>
#include <string_view>

#include "chan_descr_parts.h"
#include "chan_descr_tags.h"
#include "name_index.h"
#include "narrow_text.h"
#include "number_text.h"
#include "steps/document_steps.h"
#include "tag_table.h"

namespace {

using namespace zeb5;

using channel_vector = std::vector<chan_descr_2010 *>;

/// The entry learns what the record of the same property says and it does not know itself.
void merge_unknown(chan_descr_2010 &entry, const chan_descr_2010 &channel) {
    if (entry.ev_type == 0)
        entry.ev_type = channel.ev_type;
    entry.stream |= channel.stream;
    if (entry.dtype == 0)
        entry.dtype = channel.dtype;
}

/// The entry is then recorded wherever either was.
void merge_all(chan_descr_2010 &entry, const chan_descr_2010 &channel) {
    entry.ev_type |= channel.ev_type;
    entry.stream |= channel.stream;
    entry.dtype |= channel.dtype;
}

// What differs between reading from memory and from a file: all of it stands here.

struct memory_variant : from_memory {
    // Kept: callers of the file reader have always checked their list themselves
    static constexpr bool refuses_null_list = true;
    // Kept: master files may describe a property twice, and their readers rely on getting both
    static constexpr bool merges_repeated_prop = true;
    // Kept: DAQvariables files hold masks already, whatever their reader asks for
    static constexpr bool shifts_daq_ev_type = true;
    // Kept: log scanners know the two texts apart
    static constexpr const char *no_bit_number = "No attribute";
    // Kept: people who try out documents see it, DAQ processes with their files do not
    static constexpr bool reports_untitled_bit = true;
    // Kept: a file's descriptions of one property add up, one in memory only fills what is not known
    static constexpr auto merge_daq = merge_unknown;
};

struct file_variant : from_file {
    static constexpr bool refuses_null_list = false;
    static constexpr bool merges_repeated_prop = false;
    static constexpr bool shifts_daq_ev_type = false;
    static constexpr const char *no_bit_number = "No attribute: ";
    static constexpr bool reports_untitled_bit = false;
    static constexpr auto merge_daq = merge_all;
};

std::int32_t to_int(std::string_view text) { return static_cast<std::int32_t>(to_number(text)); }

std::uint32_t mask_of(long type) { return 1U << (static_cast<unsigned long>(type) % 32); }

std::uint32_t to_ev_type(std::string_view text, bool shift) {
    const long number = to_number(text);
    return shift ? mask_of(number) : static_cast<std::uint32_t>(number);
}

std::uint32_t to_dtype(std::string_view text, bool shift) {
    const long number = to_number(text);
    if (!shift)
        return static_cast<std::uint32_t>(number);
    // Kept: 63 wraps to 0, as the sum is taken in 32 bits
    return mask_of(number) + (number > 31 ? blocks_2010 : 0);
}

/// Appends a new sub-record, zero in every field, and counts it.
template <class Record> Record *append_new(std::vector<Record *> &parts, std::int32_t &count) {
    return append_part(parts, count, owned<Record>(new Record{}));
}

/// The channel that elements go to, and its way into the caller's list.
class channel_in_progress {
public:
    explicit channel_in_progress(channel_vector &list) : list_(list), by_prop_(list) {}

    /// From here on elements belong to a new channel; one that never got an identity is dropped.
    void begin() {
        channel_ = new chan_descr_2010;
        unlisted_.reset(channel_);
    }

    /// What is left of the channel is of no interest.
    void skip_rest() {
        channel_ = nullptr;
        unlisted_.reset();
    }

    explicit operator bool() const { return channel_ != nullptr; }
    chan_descr_2010 *operator->() const { return channel_; }
    chan_descr_2010 &operator*() const { return *channel_; }

    /// The listed record that find_chan_entry() would give, without its walk through the list; null when
    /// there is none, and the channel is appended under this name.
    chan_descr_2010 *find_or_append_as(std::string_view prop) {
        for (; indexed_ < list_.size(); ++indexed_)
            if (list_[indexed_])
                by_prop_.add(indexed_);
        chan_descr_2010 *const entry = by_prop_.find_or_add(prop, [&] { append_as(prop); });
        indexed_ = list_.size();
        return entry;
    }

    /// Names the channel and appends it. Kept: a further identity of a listed channel renames it and lists it
    /// again.
    void append_as(std::string_view prop) {
        copy_text(channel_->prop_name, prop);
        list_.push_back(channel_);
        (void)unlisted_.release(); // the list's from here on
    }

private:
    channel_vector &list_;
    chan_descr_2010 *channel_ = nullptr;
    owned<chan_descr_2010> unlisted_; // owns it until it is listed
    name_index<chan_descr_2010, &chan_descr_2010::prop_name> by_prop_;
    std::size_t indexed_ = 0; // how much of the list the index knows
};

// The CHANDESCRIPTIONS dialect

template <class Variant> class chan_descr_reader {
public:
    chan_descr_reader(channel_vector &list, bool shift, bool delete_duplicated)
        : channel_(list), shift_(shift), merges_(Variant::merges_repeated_prop && delete_duplicated) {}

    void act(const step &step) {
        if (step.row == channel_row || channel_)
            elements().action(step.row)(*this, step);
    }

    static reader_row row_of(std::string_view tag) {
        const int row = elements().row_of(tag);
        return {row, row == channel_row};
    }

private:
    using self = chan_descr_reader;
    using store = void (*)(self &, const step &);

    static constexpr int channel_row = 0; // the only one without a channel, and without a text

    static void begin_channel(self &r, const step &) {
        r.channel_.begin();
        r.bit_ = nullptr;
        r.dim_ = nullptr;
        r.stat_ = nullptr;
    }

    void identify(std::string_view prop) {
        if (!merges_)
            return channel_.append_as(prop);
        if (chan_descr_2010 *const entry = channel_.find_or_append_as(prop)) {
            merge_unknown(*entry, *channel_);
            channel_.skip_rest();
        }
    }

    // What an element does

    template <auto Field> static void number(self &r, const step &s) {
        (*r.channel_).*Field = to_int(s.text());
    }

    template <auto Field> static void text(self &r, const step &s) {
        copy_text((*r.channel_).*Field, s.text());
    }

    /// Text of the current bit, dimension or statistic; ignored when there is none.
    template <auto Part, auto Field> static void part_text(self &r, const step &s) {
        if (r.*Part)
            copy_text((r.*Part)->*Field, s.text());
    }

    /// Kept: a description of no dimension or statistic is taken for the channel's, as old files have it.
    template <auto Part, auto Field> static void part_description(self &r, const step &s) {
        if (r.*Part)
            copy_text((r.*Part)->*Field, s.text());
        else
            copy_text(r.channel_->prop_desc, s.text());
    }

    static void ev_type(self &r, const step &s) { r.channel_->ev_type = to_ev_type(s.text(), r.shift_); }

    static void dtype(self &r, const step &s) { r.channel_->dtype = to_dtype(s.text(), r.shift_); }

    static void prop(self &r, const step &s) { r.identify(s.text()); }

    static void bit(self &r, const step &s) {
        r.bit_ = append_new(r.channel_->bits, r.channel_->nbits);
        r.bit_->bit = to_int(s.text());
    }

    /// Kept: the current bit stays, so that a BIT_NAME after a DIM still names it.
    static void dim(self &r, const step &s) {
        r.dim_ = append_new(r.channel_->dims, r.channel_->ndims);
        r.dim_->dim = to_int(s.text());
        r.stat_ = nullptr; // a current statistic always belongs to the current dimension
    }

    static void stat(self &r, const step &s) {
        if (!r.dim_)
            return;
        r.stat_ = append_new(r.dim_->stats, r.dim_->nstats);
        r.stat_->stat = to_int(s.text());
    }

    static const auto &elements() {
        using c = chan_descr_2010;
        using b = bit_descr;
        using d = dim_descr;
        using t = stat_descr;
        static constexpr tag_row<store> rows[] = {
            {tags[TAG_CHANNEL][OF_CHANNEL], begin_channel}, // in channel_row
            {tags[TAG_EVTYPE][OF_CHANNEL], ev_type},
            {tags[TAG_STREAM][OF_CHANNEL], number<&c::stream>},
            {tags[TAG_PROP][OF_CHANNEL], prop},
            {tags[TAG_SB_NAME][OF_CHANNEL], text<&c::sb_name>},
            {tags[TAG_DTYPE][OF_CHANNEL], dtype},
            {tags[TAG_DB_KEY][OF_CHANNEL], number<&c::db_key>},
            {tags[TAG_COUNT][OF_CHANNEL], number<&c::count>},
            {tags[TAG_SETPOINT][OF_CHANNEL], number<&c::set_point>},
            {tags[TAG_NAME][OF_CHANNEL], text<&c::daq_name>},
            {tags[TAG_SUBSYSTEM][OF_CHANNEL], text<&c::subsystem>},
            {tags[TAG_DESC][OF_CHANNEL], text<&c::prop_desc>},
            {tags[TAG_UNITS][OF_CHANNEL], text<&c::units>},
            {tags[TAG_SIZE][OF_CHANNEL], number<&c::max_size>},
            {tags[TAG_PART][OF_CHANNEL], bit},
            {tags[TAG_PART_NAME][OF_CHANNEL], part_text<&self::bit_, &b::bit_name>},
            {tags[TAG_PART_DESCR][OF_CHANNEL], part_text<&self::bit_, &b::bit_desc>},
            {tags[TAG_PART][OF_DIM], dim},
            {tags[TAG_PART_NAME][OF_DIM], part_text<&self::dim_, &d::dim_name>},
            {tags[TAG_PART_DESCR][OF_DIM], part_description<&self::dim_, &d::dim_desc>},
            {tags[TAG_UNITS][OF_DIM], part_text<&self::dim_, &d::units>},
            {tags[TAG_PART][OF_STAT], stat},
            {tags[TAG_PART_NAME][OF_STAT], part_text<&self::stat_, &t::stat_name>},
            {tags[TAG_PART_DESCR][OF_STAT], part_description<&self::stat_, &t::stat_desc>},
            {tags[TAG_UNITS][OF_STAT], part_text<&self::stat_, &t::units>},
        };
        static constexpr tag_table table{rows};
        return table;
    }

    channel_in_progress channel_;
    bool shift_;
    bool merges_;
    bit_descr *bit_ = nullptr;
    dim_descr *dim_ = nullptr;
    stat_descr *stat_ = nullptr;
};

// The DAQvariables dialect

template <class Variant> class daq_variables_reader {
public:
    daq_variables_reader(typename Variant::steps &steps, channel_vector &list, bool shift)
        : steps_(steps), channel_(list), shift_(Variant::shifts_daq_ev_type && shift) {}

    void act(const step &step) {
        const element &found = elements().action(step.row);
        if (!found.kind || (channel_ && (found.kind & kind_)))
            found.action(*this, step);
    }

    static reader_row row_of(std::string_view tag) {
        const int row = elements().row_of(tag);
        return {row, row != reader_row::none && elements().action(row).rule == ALWAYS};
    }

    int missing_attributes() const { return missing_attributes_; }

private:
    using self = daq_variables_reader;
    using store = void (*)(self &, const step &);

    /// Kinds of channel, as a mask in the table of elements.
    enum channel_kind { FLOAT = 1, BITS = 2, MATRIX = 4, ANY = FLOAT | BITS | MATRIX, BEGINS_CHANNEL = 0 };
    enum text_rule { ALWAYS, WITH_TEXT };

    struct element {
        int kind; // channels in which it means something
        text_rule rule;
        store action;
    };

    template <channel_kind Kind> static void begin(self &r, const step &) {
        r.channel_.begin();
        r.kind_ = Kind;
        r.dim_ = nullptr;
    }

    /// Kept: other than PROP this merges whatever `delete_duplicated` says, as every DAQvariables reader
    /// relies on.
    static void prop(self &r, const step &s) {
        if (chan_descr_2010 *const entry = r.channel_.find_or_append_as(s.text())) {
            Variant::merge_daq(*entry, *r.channel_);
            r.channel_.skip_rest();
        }
    }

    static void ev_type(self &r, const step &s) { r.channel_->ev_type = to_ev_type(s.text(), r.shift_); }

    static void set_point(self &r, const step &s) { r.channel_->set_point = to_int(s.text()); }

    template <auto Field> static void text(self &r, const step &s) {
        copy_text((*r.channel_).*Field, s.text());
    }

    /// Text of the current dimension, or of the channel when there is none.
    template <auto OfDimension, auto OfChannel> static void part_text(self &r, const step &s) {
        if (r.dim_)
            copy_text(r.dim_->*OfDimension, s.text());
        else
            copy_text((*r.channel_).*OfChannel, s.text());
    }

    static void last_index(self &r, const step &s) {
        r.channel_->max_size = static_cast<std::int32_t>(static_cast<unsigned long>(to_number(s.text())) + 1);
    }

    /// Kept: a title is delivered at its start tag and again with its text, and each time makes a bit.
    static void bit(self &r, const step &s) {
        const auto number = r.attribute(s, daq_tags::bit_number, Variant::no_bit_number, daq_tags::bit);
        if (!number)
            return;
        bit_descr *const bit = append_new(r.channel_->bits, r.channel_->nbits);
        bit->bit = *number;
        if (s.value)
            copy_text(bit->bit_name, s.text());
        else if (Variant::reports_untitled_bit)
            std::cout << "bitTitle is not defined for bit  " << bit->bit << " prop:" << r.channel_->prop_name
                      << std::endl;
    }

    static void dim(self &r, const step &s) {
        const auto id = r.attribute(s, daq_tags::dim_id, "No attribute: ", daq_tags::dim);
        if (!id)
            return;
        r.dim_ = append_new(r.channel_->dims, r.channel_->ndims);
        r.dim_->dim = *id;
    }

    static void dim_name(self &r, const step &s) {
        if (r.dim_)
            copy_text(r.dim_->dim_name, s.text());
    }

    /// The number in the one attribute of the current element that matters; a missing one is counted and
    /// reported. Looked up and read once for each element: it may have thousands, or a million digits, and is
    /// delivered again at each comment behind its start.
    std::optional<std::int32_t> attribute(const step &step, const char *name, const char *complaint,
                                          const char *tag) {
        if (step.element != attribute_element_) {
            attribute_element_ = step.element;
            const auto text = steps_.attribute(name);
            attribute_ = text ? std::optional(to_int(*text)) : std::nullopt;
        }
        if (attribute_)
            return attribute_;
        ++missing_attributes_;
        std::string line = complaint; // in one piece, as standard error is not buffered
        line.append(name).append(" found for ").append(tag).append(" prop: ").append(channel_->prop_name);
        std::cerr << line + '\n';
        return std::nullopt;
    }

    static const auto &elements() {
        using c = chan_descr_2010;
        using d = dim_descr;
        static constexpr tag_row<element> rows[] = {
            {daq_tags::float_channel, {BEGINS_CHANNEL, ALWAYS, begin<FLOAT>}},
            {daq_tags::bits_channel, {BEGINS_CHANNEL, ALWAYS, begin<BITS>}},
            {daq_tags::matrix_channel, {BEGINS_CHANNEL, ALWAYS, begin<MATRIX>}},
            {daq_tags::ev_type, {ANY, WITH_TEXT, ev_type}},
            {daq_tags::prop, {ANY, WITH_TEXT, prop}},
            {daq_tags::daq_name, {ANY, WITH_TEXT, text<&c::daq_name>}},
            {daq_tags::subsystem, {ANY, WITH_TEXT, text<&c::subsystem>}},
            {daq_tags::set_point, {ANY, WITH_TEXT, set_point}},
            {daq_tags::description, {ANY, WITH_TEXT, part_text<&d::dim_desc, &c::prop_desc>}},
            {daq_tags::units, {ANY, WITH_TEXT, part_text<&d::units, &c::units>}},
            {daq_tags::last_index, {ANY, WITH_TEXT, last_index}},
            {daq_tags::bit, {BITS, ALWAYS, bit}},
            {daq_tags::dim, {MATRIX, ALWAYS, dim}},
            {daq_tags::dim_name, {MATRIX, WITH_TEXT, dim_name}},
        };
        static constexpr tag_table table{rows};
        return table;
    }

    typename Variant::steps &steps_; // knows the attributes of the current element
    channel_in_progress channel_;
    bool shift_;
    int kind_ = ANY;
    dim_descr *dim_ = nullptr;            // only ever set in a matrix channel
    std::uint32_t attribute_element_ = 0; // number of the element that `attribute_` was looked up for
    std::optional<std::int32_t> attribute_;
    int missing_attributes_ = 0;
};

template <class Variant>
int read_channels(char *source, channel_vector *list, bool shift, bool delete_duplicated) {
    if (Variant::refuses_null_list && !list)
        return 2;
    return walk_document<Variant>(source, [&](typename Variant::steps &steps, std::string_view root) {
        if (root == tags[TAG_ROOT][OF_CHANNEL]) {
            chan_descr_reader<Variant> reader(*list, shift, delete_duplicated);
            for_each_step(steps, reader);
            return 0;
        }
        if (root == daq_tags::root) {
            daq_variables_reader<Variant> reader(steps, *list, shift);
            for_each_step(steps, reader);
            return reader.missing_attributes();
        }
        std::fprintf(stderr, "WRONG root tag: '%.*s' must be '%s or %s'\n", static_cast<int>(root.size()),
                     root.data(), tags[TAG_ROOT][OF_CHANNEL], daq_tags::root);
        return 1;
    });
}

} // namespace

int parse_descr_list_read(char *xml, std::vector<chan_descr_2010 *> *list, bool shift,
                          bool delete_duplicated) {
    return read_channels<memory_variant>(xml, list, shift, delete_duplicated);
}

int parse_descr_list_readf(char *path, std::vector<chan_descr_2010 *> *list, bool shift,
                           bool delete_duplicated) {
    return read_channels<file_variant>(path, list, shift, delete_duplicated);
}

int zeb5_load_chan_descr(const zeb5_xml_chan_descr_header *tab, std::vector<chan_descr_2010 *> *list) {
    if (!tab || !list)
        return -1;
    if (tab->pattern != 0xCDECDEF2 && tab->pattern != 0xCDECDEF3)
        return -3;
    const std::int32_t head = sizeof *tab;
    if (tab->length <= head)
        return -4;
    std::string text(tab->xml, static_cast<std::size_t>(tab->length - head));
    return parse_descr_list_read(text.data(), list, false, true);
}

int zeb5_load_master_daq_channel_description_file(std::vector<chan_descr_2010 *> *list, char *file) {
    if (!list || !file || !*file)
        return -1;
    // Kept: the file reader lists duplicates all the same
    return parse_descr_list_readf(file, list, false, true);
}

int dump_chan_desr_from_xml(char *xml, char *file_name, int mode, int format, int fd) {
    struct own_list {
        channel_vector records;
        ~own_list() { clean_chan_desr_list(&records); }
    } list;
    if (parse_descr_list_read(xml, &list.records, true, true) != 0) {
        std::printf("Failed to parse CHANDESCR list\n");
        return 3;
    }
    return dump_chan_desr(&list.records, file_name, mode, format, fd, nullptr, nullptr);
}
