#include "kept_channels.h"

#include <cstring>

namespace bench {

namespace {

// Goes through the fields of each record in one order, both for keeping and for making it; `pass` decides
// which.

template <class Pass> void fields(Pass &pass, bit_descr &bit) {
    pass.number(bit.bit);
    pass.text(bit.bit_name);
    pass.text(bit.bit_desc);
}

template <class Pass> void fields(Pass &pass, stat_descr &stat) {
    pass.number(stat.stat);
    pass.text(stat.stat_name);
    pass.text(stat.stat_desc);
    pass.text(stat.units);
}

template <class Pass> void fields(Pass &pass, dim_descr &dim) {
    pass.number(dim.dim);
    pass.text(dim.dim_name);
    pass.text(dim.dim_desc);
    pass.text(dim.units);
    pass.parts(dim.stats, dim.nstats);
}

template <class Pass> void fields(Pass &pass, chan_descr_2010 &channel) {
    pass.number(channel.stream);
    pass.number(channel.ev_type);
    pass.number(channel.count);
    pass.number(channel.dtype);
    pass.number(channel.db_key);
    pass.text(channel.prop_name);
    pass.text(channel.daq_name);
    pass.text(channel.prop_desc);
    pass.text(channel.units);
    pass.number(channel.max_size);
    pass.parts(channel.bits, channel.nbits);
    pass.parts(channel.dims, channel.ndims);
    pass.text(channel.sb_name);
    pass.number(channel.set_point);
    pass.text(channel.subsystem);
}

} // namespace

class kept_channels::keeping {
public:
    explicit keeping(kept_channels &kept) : kept_(kept) {}

    template <class Number> void number(Number number) {
        kept_.numbers_.push_back(static_cast<std::int32_t>(number));
    }

    template <std::size_t N> void text(const char (&field)[N]) {
        static_assert(N - 1 <= UINT8_MAX);
        const std::size_t length = strnlen(field, N - 1);
        kept_.lengths_.push_back(static_cast<std::uint8_t>(length));
        kept_.texts_.append(field, length);
    }

    template <class Part> void parts(std::vector<Part *> &parts, std::int32_t count) {
        number(count);
        for (Part *const part : parts)
            fields(*this, *part);
    }

private:
    kept_channels &kept_;
};

class kept_channels::making {
public:
    explicit making(const kept_channels &kept)
        : number_(kept.numbers_.data()), length_(kept.lengths_.data()), text_(kept.texts_.data()) {}

    template <class Number> void number(Number &number) { number = static_cast<Number>(*number_++); }

    /// The field belongs to a new record, so its NUL is there already.
    template <std::size_t N> void text(char (&field)[N]) {
        const std::size_t length = *length_++;
        std::memcpy(field, text_, length);
        text_ += length;
    }

    template <class Part> void parts(std::vector<Part *> &parts, std::int32_t &count) {
        number(count);
        for (std::int32_t i = 0; i < count; ++i) {
            parts.push_back(new Part{});
            fields(*this, *parts.back());
        }
    }

private:
    const std::int32_t *number_;
    const std::uint8_t *length_;
    const char *text_;
};

kept_channels::kept_channels(const channel_list &list) : channels_(list.size()) {
    keeping pass(*this);
    for (chan_descr_2010 *const channel : list)
        fields(pass, *channel);
}

void kept_channels::make(channel_list &list) const {
    making pass(*this);
    for (std::size_t i = 0; i < channels_; ++i) {
        list.push_back(new chan_descr_2010);
        fields(pass, *list.back());
    }
}

} // namespace bench
