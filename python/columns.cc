#include "columns.h"

#include <functional>
#include <unordered_map>

#include <pybind11/numpy.h>

#include "texts.h"

namespace {

/// One channel, or one part of it with all that it belongs to.
struct row {
    const chan_descr_2010 *channel;
    const bit_descr *bit;
    const dim_descr *dim;
    const stat_descr *stat;
};

/// Makes each text of a column once, as long as it has few different ones: units and server blocks come again
/// and again, names do not.
class texts {
public:
    py::object operator()(std::string_view text) {
        if (made_.size() > most)
            return to_python(text);
        const auto [found, is_new] = made_.try_emplace(text);
        if (is_new)
            found->second = to_python(text);
        return found->second;
    }

private:
    static constexpr std::size_t most = 4096;
    std::unordered_map<std::string_view, py::object> made_;
};

class column_maker {
public:
    column_maker(const std::vector<row> &rows, bool arrays) : rows_(rows), arrays_(arrays) {}

    template <class Get> void text(const char *name, Get get) {
        py::list column(rows_.size());
        texts made;
        for (std::size_t i = 0; i < rows_.size(); ++i)
            PyList_SET_ITEM(column.ptr(), static_cast<Py_ssize_t>(i),
                            made(text_of(get(rows_[i]))).release().ptr());
        columns_[name] = column;
    }

    template <class Get> void number(const char *name, Get get) {
        using value = std::decay_t<decltype(get(rows_[0]))>;
        if (arrays_) {
            py::array_t<value> column(static_cast<py::ssize_t>(rows_.size()));
            value *const data = column.mutable_data();
            for (std::size_t i = 0; i < rows_.size(); ++i)
                data[i] = get(rows_[i]);
            columns_[name] = column;
        } else {
            py::list column(rows_.size());
            for (std::size_t i = 0; i < rows_.size(); ++i)
                PyList_SET_ITEM(column.ptr(), static_cast<Py_ssize_t>(i),
                                py::int_(get(rows_[i])).release().ptr());
            columns_[name] = column;
        }
    }

    py::dict take() { return std::move(columns_); }

private:
    const std::vector<row> &rows_;
    bool arrays_;
    py::dict columns_;
};

// A column for each member: the name in Python is the member's

#define TEXT(record, member)                                                                                 \
    make.text(                                                                                               \
        #member, [](const row &r) -> const auto & { return r.record->member; })
#define NUMBER(record, member) make.number(#member, [](const row &r) { return r.record->member; })

void add_channel_columns(column_maker &make) {
    TEXT(channel, prop_name);
    TEXT(channel, daq_name);
    NUMBER(channel, stream);
    NUMBER(channel, ev_type);
    NUMBER(channel, dtype);
    NUMBER(channel, count);
    NUMBER(channel, db_key);
    NUMBER(channel, set_point);
    NUMBER(channel, max_size);
    TEXT(channel, units);
    TEXT(channel, prop_desc);
    TEXT(channel, sb_name);
    TEXT(channel, subsystem);
    NUMBER(channel, nbits);
    NUMBER(channel, ndims);
}

void add_bit_columns(column_maker &make) {
    TEXT(channel, prop_name);
    NUMBER(bit, bit);
    TEXT(bit, bit_name);
    TEXT(bit, bit_desc);
}

void add_dim_columns(column_maker &make) {
    TEXT(channel, prop_name);
    NUMBER(dim, dim);
    TEXT(dim, dim_name);
    TEXT(dim, dim_desc);
    TEXT(dim, units);
    NUMBER(dim, nstats);
}

void add_stat_columns(column_maker &make) {
    TEXT(channel, prop_name);
    NUMBER(dim, dim);
    NUMBER(stat, stat);
    TEXT(stat, stat_name);
    TEXT(stat, stat_desc);
    TEXT(stat, units);
}

#undef TEXT
#undef NUMBER

template <class Add> void each_channel(const chan_descr_2010 &channel, Add add) {
    add({&channel, {}, {}, {}});
}

template <class Add> void each_bit(const chan_descr_2010 &channel, Add add) {
    for (const bit_descr *bit : channel.bits)
        if (bit)
            add({&channel, bit, {}, {}});
}

template <class Add> void each_dim(const chan_descr_2010 &channel, Add add) {
    for (const dim_descr *dim : channel.dims)
        if (dim)
            add({&channel, {}, dim, {}});
}

template <class Add> void each_stat(const chan_descr_2010 &channel, Add add) {
    each_dim(channel, [&](const row &of) {
        for (const stat_descr *stat : of.dim->stats)
            if (stat)
                add({of.channel, {}, of.dim, stat});
    });
}

using add_row = std::function<void(const row &)>;

struct table {
    const char *name;
    void (*each_row)(const chan_descr_2010 &, add_row);
    void (*add_columns)(column_maker &);
};

const table tables[] = {
    {"channels", each_channel<add_row>, add_channel_columns},
    {"bits", each_bit<add_row>, add_bit_columns},
    {"dims", each_dim<add_row>, add_dim_columns},
    {"stats", each_stat<add_row>, add_stat_columns},
};

} // namespace

py::dict columns(const zeb5xml::channel_list &channels, const std::string &of, bool arrays) {
    for (const table &one : tables)
        if (of == one.name) {
            std::vector<row> rows;
            for (const chan_descr_2010 &channel : channels)
                one.each_row(channel, [&](const row &found) { rows.push_back(found); });
            column_maker make(rows, arrays);
            one.add_columns(make);
            return make.take();
        }
    throw py::value_error("'" + of + "' is none of channels, bits, dims and stats");
}
