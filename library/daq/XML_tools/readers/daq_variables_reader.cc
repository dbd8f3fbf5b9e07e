#include "readers/daq_variables_reader.h"

#include <iostream>
#include <optional>
#include <string>

#include "elements/daq_variables_elements.h"
#include "steps/tag_table.h"
#include "text/field_text.h"
#include "text/number_text.h"

namespace zeb5 {

namespace {

class daq_variables_reader {
public:
    daq_variables_reader(document_steps &steps, channel_vector &list, bool shift,
                         const channel_variant &variant)
        : steps_(steps), channel_(list), shift_(variant.shifts_daq_ev_type && shift), variant_(variant) {}

    void act(const step &step);
    static reader_row row_of(std::string_view tag);

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

    /// Kept: unlike PROP, this merges whatever `delete_duplicated` says; users of every DAQvariables reader
    /// rely on it.
    static void prop(self &r, const step &s) {
        if (chan_descr_2010 *const entry = r.channel_.find_or_append_as(s.text())) {
            r.variant_.merge_daq(*entry, *r.channel_);
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
        const auto number = r.attribute(s, daq_tags::bit_number, r.variant_.no_bit_number, daq_tags::bit);
        if (!number)
            return;
        bit_descr *const bit = append_new(r.channel_->bits, r.channel_->nbits);
        bit->bit = *number;
        if (s.value)
            copy_text(bit->bit_name, s.text());
        else if (r.variant_.reports_untitled_bit)
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

    /// Returns the number in the one attribute of the current element that matters; counts and reports a
    /// missing one. The attribute is looked up and read once for each element: an element may have thousands
    /// of attributes, or a million digits in this one, and is delivered again at each comment after its start
    /// tag.
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
        std::string line = complaint; // written in one piece, as standard error is not buffered
        line.append(name).append(" found for ").append(tag).append(" prop: ").append(channel_->prop_name);
        std::cerr << line + '\n';
        return std::nullopt;
    }

    /// A row of any channel whose element the published rows keep in the same field.
    template <auto Field> static consteval tag_row<element> row(std::string_view tag, store action) {
        return {kept_in<Field>(daq_variables_rows, tag), {ANY, WITH_TEXT, action}};
    }

    template <auto Field> static consteval tag_row<element> text_row(std::string_view tag) {
        return row<Field>(tag, text<Field>);
    }

    template <auto OfDimension, auto OfChannel>
    static consteval tag_row<element> part_row(std::string_view tag) {
        return row<OfDimension>(row<OfChannel>(tag, nullptr).tag, part_text<OfDimension, OfChannel>);
    }

    template <auto Field> static consteval std::string_view kept(std::string_view tag) {
        return kept_in<Field>(daq_variables_rows, tag);
    }

    static const auto &elements() {
        using c = chan_descr_2010;
        using d = dim_descr;
        static constexpr tag_row<element> rows[] = {
            {daq_tags::float_channel, {BEGINS_CHANNEL, ALWAYS, begin<FLOAT>}},
            {daq_tags::bits_channel, {BEGINS_CHANNEL, ALWAYS, begin<BITS>}},
            {daq_tags::matrix_channel, {BEGINS_CHANNEL, ALWAYS, begin<MATRIX>}},
            row<&c::ev_type>(daq_tags::ev_type, ev_type),
            row<&c::prop_name>(daq_tags::prop, prop),
            text_row<&c::daq_name>(daq_tags::daq_name),
            text_row<&c::subsystem>(daq_tags::subsystem),
            row<&c::set_point>(daq_tags::set_point, set_point),
            part_row<&d::dim_desc, &c::prop_desc>(daq_tags::description),
            part_row<&d::units, &c::units>(daq_tags::units),
            row<&c::max_size>(daq_tags::last_index, last_index),
            {kept<&bit_descr::bit_name>(daq_tags::bit), {BITS, ALWAYS, bit}},
            {kept<&d::dim>(daq_tags::dim), {MATRIX, ALWAYS, dim}},
            {kept<&d::dim_name>(daq_tags::dim_name), {MATRIX, WITH_TEXT, dim_name}},
        };
        static_assert(has_names_of(rows, daq_variables_rows));
        static constexpr tag_table table{rows};
        return table;
    }

    document_steps &steps_; // knows the attributes of the current element
    channel_in_progress channel_;
    bool shift_;
    const channel_variant &variant_;
    int kind_ = ANY;
    dim_descr *dim_ = nullptr;            // only ever set in a matrix channel
    std::uint32_t attribute_element_ = 0; // number of the element that `attribute_` was looked up for
    std::optional<std::int32_t> attribute_;
    int missing_attributes_ = 0;
};

// After the class, where the return type of elements() is known

inline void daq_variables_reader::act(const step &step) {
    const element &found = elements().action(step.row);
    if (!found.kind || (channel_ && (found.kind & kind_)))
        found.action(*this, step);
}

inline reader_row daq_variables_reader::row_of(std::string_view tag) {
    const int row = elements().row_of(tag);
    return {row, row != reader_row::none && elements().action(row).rule == ALWAYS};
}

} // namespace

int read_daq_variables(document_steps &steps, channel_vector &list, bool shift,
                       const channel_variant &variant) {
    daq_variables_reader reader(steps, list, shift, variant);
    for_each_step(steps, reader);
    return reader.missing_attributes();
}

} // namespace zeb5
