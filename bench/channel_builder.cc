#include "channel_builder.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstring>

namespace bench {

namespace {

std::int32_t to_int(std::string_view text) {
    text.remove_prefix(std::min(text.find_first_not_of(" \t\n"), text.size()));
    std::int32_t number = 0;
    std::from_chars(text.data(), text.data() + text.size(), number);
    return number;
}

template <std::size_t N> void copy(char (&field)[N], std::string_view text) {
    const std::size_t length = std::min(text.size(), N - 1);
    std::memcpy(field, text.data(), length);
    field[length] = '\0';
}

template <class Record> Record *append(std::vector<Record *> &parts, std::int32_t &count) {
    parts.push_back(new Record{});
    ++count;
    return parts.back();
}

/// Finds rows by name, by open addressing in a table four times their number.
class element_table {
public:
    template <std::size_t Rows> explicit element_table(const channel_builder::element (&rows)[Rows]) {
        static_assert(Rows * 4 <= slots);
        for (const auto &row : rows) {
            std::size_t at = hash(row.name);
            while (rows_[at])
                at = (at + 1) % slots;
            rows_[at] = &row;
        }
    }

    const channel_builder::element *find(std::string_view name) const {
        std::size_t at = hash(name);
        while (rows_[at] && rows_[at]->name != name)
            at = (at + 1) % slots;
        return rows_[at];
    }

private:
    static constexpr std::size_t slots = 128;

    static std::size_t hash(std::string_view name) {
        const auto byte = [name](std::size_t i) { return static_cast<unsigned char>(name[i]); };
        return (name.size() * 37 + byte(0) * 5U + byte(name.size() / 2) * 19U + byte(name.size() - 1) * 3U) %
               slots;
    }

    std::array<const channel_builder::element *, slots> rows_{};
};

} // namespace

/// The actions of both dialects.
struct channel_elements {
    using builder = channel_builder;

    static void begin(builder &b, const char *) {
        b.unlisted_ = std::make_unique<chan_descr_2010>();
        b.channel_ = b.unlisted_.get();
        b.bit_ = nullptr;
        b.dim_ = nullptr;
        b.stat_ = nullptr;
    }

    static void list_as(builder &b, std::string_view prop) {
        copy(b.channel_->prop_name, prop);
        b.list_.push_back(b.channel_);
        (void)b.unlisted_.release();
    }

    static void list_once(builder &b, std::string_view prop) {
        if (const auto known = b.by_prop_.find(prop); known != b.by_prop_.end()) {
            known->second->stream |= b.channel_->stream;
            b.channel_ = nullptr;
            return;
        }
        list_as(b, prop);
        b.by_prop_.emplace(b.channel_->prop_name, b.channel_);
    }

    template <auto Field> static void number(builder &b, std::string_view text) {
        b.channel_->*Field = static_cast<std::remove_reference_t<decltype(b.channel_->*Field)>>(to_int(text));
    }

    template <auto Field> static void text(builder &b, std::string_view text) {
        copy(b.channel_->*Field, text);
    }

    template <auto Part, auto Field> static void part_text(builder &b, std::string_view text) {
        if (b.*Part)
            copy((b.*Part)->*Field, text);
    }

    template <auto OfDim, auto OfChannel> static void dim_or_channel_text(builder &b, std::string_view text) {
        if (b.dim_)
            copy(b.dim_->*OfDim, text);
        else
            copy(b.channel_->*OfChannel, text);
    }

    static void bit(builder &b, std::string_view text) {
        b.bit_ = append(b.channel_->bits, b.channel_->nbits);
        b.bit_->bit = to_int(text);
    }

    static void dim(builder &b, std::string_view text) {
        b.dim_ = append(b.channel_->dims, b.channel_->ndims);
        b.dim_->dim = to_int(text);
        b.stat_ = nullptr;
    }

    static void stat(builder &b, std::string_view text) {
        if (!b.dim_)
            return;
        b.stat_ = append(b.dim_->stats, b.dim_->nstats);
        b.stat_->stat = to_int(text);
    }

    static void numbered_bit(builder &b, const char *number) {
        if (b.channel_ && number)
            bit(b, number);
    }

    static void numbered_dim(builder &b, const char *number) {
        if (b.channel_ && number)
            dim(b, number);
    }

    static void last_index(builder &b, std::string_view text) { b.channel_->max_size = to_int(text) + 1; }

    using c = chan_descr_2010;
    static constexpr auto bit_part = &builder::bit_;
    static constexpr auto dim_part = &builder::dim_;
    static constexpr auto stat_part = &builder::stat_;

    static constexpr channel_builder::element chandescriptions[] = {
        {"CHANNEL", begin, nullptr},
        {"EVTYPE", nullptr, number<&c::ev_type>},
        {"STREAM", nullptr, number<&c::stream>},
        {"PROP", nullptr, list_as},
        {"SB_NAME", nullptr, text<&c::sb_name>},
        {"DTYPE", nullptr, number<&c::dtype>},
        {"DB_KEY", nullptr, number<&c::db_key>},
        {"COUNT", nullptr, number<&c::count>},
        {"SETPOINT", nullptr, number<&c::set_point>},
        {"NAME", nullptr, text<&c::daq_name>},
        {"SUBSYSTEM", nullptr, text<&c::subsystem>},
        {"DESC", nullptr, text<&c::prop_desc>},
        {"UNITS", nullptr, text<&c::units>},
        {"SIZE", nullptr, number<&c::max_size>},
        {"BIT", nullptr, bit},
        {"BIT_NAME", nullptr, part_text<bit_part, &bit_descr::bit_name>},
        {"BIT_DESCR", nullptr, part_text<bit_part, &bit_descr::bit_desc>},
        {"DIM", nullptr, dim},
        {"DIM_NAME", nullptr, part_text<dim_part, &dim_descr::dim_name>},
        {"DIM_DESCR", nullptr, part_text<dim_part, &dim_descr::dim_desc>},
        {"DIM_UNITS", nullptr, part_text<dim_part, &dim_descr::units>},
        {"STAT", nullptr, stat},
        {"STAT_NAME", nullptr, part_text<stat_part, &stat_descr::stat_name>},
        {"STAT_DESCR", nullptr, part_text<stat_part, &stat_descr::stat_desc>},
        {"STAT_UNITS", nullptr, part_text<stat_part, &stat_descr::units>},
    };

    static constexpr channel_builder::element daq_variables[] = {
        {"DaqFloat", begin, nullptr},
        {"DaqBits", begin, nullptr},
        {"DaqFloatMatrix", begin, nullptr},
        {"evType", nullptr, number<&c::ev_type>},
        {"orvin", nullptr, list_once},
        {"daqName", nullptr, text<&c::daq_name>},
        {"subSystem", nullptr, text<&c::subsystem>},
        {"setPoint", nullptr, number<&c::set_point>},
        {"description", nullptr, dim_or_channel_text<&dim_descr::dim_desc, &c::prop_desc>},
        {"units", nullptr, dim_or_channel_text<&dim_descr::units, &c::units>},
        {"lastIndex", nullptr, last_index},
        {"bitTitle", numbered_bit, part_text<bit_part, &bit_descr::bit_name>, true},
        {"dimension", numbered_dim, nullptr, true},
        {"name", nullptr, part_text<dim_part, &dim_descr::dim_name>},
    };
};

const channel_builder::element *channel_builder::find(std::string_view name) const {
    static const element_table tables[] = {element_table(channel_elements::chandescriptions),
                                           element_table(channel_elements::daq_variables)};
    return tables[form_].find(name);
}

} // namespace bench
