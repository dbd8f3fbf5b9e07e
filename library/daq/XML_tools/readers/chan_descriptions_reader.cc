#include "readers/chan_descriptions_reader.h"

#include "elements/chan_descriptions_elements.h"
#include "steps/tag_table.h"
#include "text/field_text.h"

namespace zeb5 {

namespace {

class chan_descr_reader {
public:
    chan_descr_reader(channel_vector &list, bool shift, bool merges)
        : channel_(list), shift_(shift), merges_(merges) {}

    void act(const step &step);
    static reader_row row_of(std::string_view tag);

private:
    using self = chan_descr_reader;
    using store = void (*)(self &, const step &);

    static constexpr int channel_row = 0; // the only row that needs neither a channel nor a text

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

    /// Kept: without a current dimension or statistic, the description is the channel's, as old files have
    /// it.
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

    /// A row whose element the published rows keep in the same field.
    template <auto Field> static consteval tag_row<store> row(std::string_view tag, store action) {
        return {kept_in<Field>(chan_descriptions_rows, tag), action};
    }

    template <auto Field> static consteval tag_row<store> number_row(std::string_view tag) {
        return row<Field>(tag, number<Field>);
    }

    template <auto Field> static consteval tag_row<store> text_row(std::string_view tag) {
        return row<Field>(tag, text<Field>);
    }

    template <auto Part, auto Field> static consteval tag_row<store> part_row(std::string_view tag) {
        return row<Field>(tag, part_text<Part, Field>);
    }

    template <auto Part, auto Field> static consteval tag_row<store> description_row(std::string_view tag) {
        return row<Field>(row<&chan_descr_2010::prop_desc>(tag, nullptr).tag, part_description<Part, Field>);
    }

    static const auto &elements() {
        using c = chan_descr_2010;
        using b = bit_descr;
        using d = dim_descr;
        using t = stat_descr;
        static constexpr tag_row<store> rows[] = {
            {tags[TAG_CHANNEL][OF_CHANNEL], begin_channel}, // in channel_row
            row<&c::ev_type>(tags[TAG_EVTYPE][OF_CHANNEL], ev_type),
            number_row<&c::stream>(tags[TAG_STREAM][OF_CHANNEL]),
            row<&c::prop_name>(tags[TAG_PROP][OF_CHANNEL], prop),
            text_row<&c::sb_name>(tags[TAG_SB_NAME][OF_CHANNEL]),
            row<&c::dtype>(tags[TAG_DTYPE][OF_CHANNEL], dtype),
            number_row<&c::db_key>(tags[TAG_DB_KEY][OF_CHANNEL]),
            number_row<&c::count>(tags[TAG_COUNT][OF_CHANNEL]),
            number_row<&c::set_point>(tags[TAG_SETPOINT][OF_CHANNEL]),
            text_row<&c::daq_name>(tags[TAG_NAME][OF_CHANNEL]),
            text_row<&c::subsystem>(tags[TAG_SUBSYSTEM][OF_CHANNEL]),
            text_row<&c::prop_desc>(tags[TAG_DESC][OF_CHANNEL]),
            text_row<&c::units>(tags[TAG_UNITS][OF_CHANNEL]),
            number_row<&c::max_size>(tags[TAG_SIZE][OF_CHANNEL]),
            row<&b::bit>(tags[TAG_PART][OF_CHANNEL], bit),
            part_row<&self::bit_, &b::bit_name>(tags[TAG_PART_NAME][OF_CHANNEL]),
            part_row<&self::bit_, &b::bit_desc>(tags[TAG_PART_DESCR][OF_CHANNEL]),
            row<&d::dim>(tags[TAG_PART][OF_DIM], dim),
            part_row<&self::dim_, &d::dim_name>(tags[TAG_PART_NAME][OF_DIM]),
            description_row<&self::dim_, &d::dim_desc>(tags[TAG_PART_DESCR][OF_DIM]),
            part_row<&self::dim_, &d::units>(tags[TAG_UNITS][OF_DIM]),
            row<&t::stat>(tags[TAG_PART][OF_STAT], stat),
            part_row<&self::stat_, &t::stat_name>(tags[TAG_PART_NAME][OF_STAT]),
            description_row<&self::stat_, &t::stat_desc>(tags[TAG_PART_DESCR][OF_STAT]),
            part_row<&self::stat_, &t::units>(tags[TAG_UNITS][OF_STAT]),
        };
        static_assert(has_names_of(rows, chan_descriptions_rows));
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

// After the class, where the return type of elements() is known

inline void chan_descr_reader::act(const step &step) {
    if (step.row == channel_row || channel_)
        elements().action(step.row)(*this, step);
}

inline reader_row chan_descr_reader::row_of(std::string_view tag) {
    const int row = elements().row_of(tag);
    return {row, row == channel_row};
}

} // namespace

void read_chan_descriptions(document_steps &steps, channel_vector &list, bool shift, bool merges) {
    chan_descr_reader reader(list, shift, merges);
    for_each_step(steps, reader);
}

} // namespace zeb5
