#include "records/record_types.h"

#include <cstdlib>
#include <new>

#include "parse_chan_descr.h"
#include "parse_env_index_dictionary.h"
#include "parse_ev_list.h"
#include "records/field_rows.h"
#include "zeb5_gige_descr.h"

namespace {

using namespace field_rows;

template <class Struct> void *make_new() { return new Struct(); }

template <class Struct> record fresh(const record_type &type) {
    const Struct one{};
    return record_from(&one, type);
}

// Channels

constexpr field_row bit_rows[] = {
    number<&bit_descr::bit>("bit"),
    text<&bit_descr::bit_name>("bit_name"),
    text<&bit_descr::bit_desc>("bit_desc"),
};
constexpr record_type bit_type = {"bit", bit_rows, make_new<bit_descr>, fresh<bit_descr>};

constexpr field_row stat_rows[] = {
    number<&stat_descr::stat>("stat"),
    text<&stat_descr::stat_name>("stat_name"),
    text<&stat_descr::stat_desc>("stat_desc"),
    text<&stat_descr::units>("units"),
};
constexpr record_type stat_type = {"statistic", stat_rows, make_new<stat_descr>, fresh<stat_descr>};

constexpr field_row dim_rows[] = {
    number<&dim_descr::dim>("dim"),
    text<&dim_descr::dim_name>("dim_name"),
    text<&dim_descr::dim_desc>("dim_desc"),
    text<&dim_descr::units>("units"),
    counted_parts<&dim_descr::stats, &dim_descr::nstats, stat_type>("stats"),
};
constexpr record_type dim_type = {"dimension", dim_rows, make_new<dim_descr>, fresh<dim_descr>};

constexpr field_row channel_rows[] = {
    selected_by("--channel", text<&chan_descr_2010::prop_name>("prop_name")),
    selected_by("--channel", text<&chan_descr_2010::daq_name>("daq_name")),
    selected_by("--stream", number<&chan_descr_2010::stream>("stream")),
    selected_by("--event", number<&chan_descr_2010::ev_type>("ev_type", EVENT_MASK)),
    number<&chan_descr_2010::dtype>("dtype", BLOCK_MASK),
    number<&chan_descr_2010::count>("count"),
    number<&chan_descr_2010::db_key>("db_key"),
    text<&chan_descr_2010::prop_desc>("prop_desc"),
    text<&chan_descr_2010::units>("units"),
    number<&chan_descr_2010::max_size>("max_size"),
    text<&chan_descr_2010::sb_name>("sb_name"),
    number<&chan_descr_2010::set_point>("set_point"),
    selected_by("--subsystem", text<&chan_descr_2010::subsystem>("subsystem")),
    counted_parts<&chan_descr_2010::bits, &chan_descr_2010::nbits, bit_type>("bits"),
    counted_parts<&chan_descr_2010::dims, &chan_descr_2010::ndims, dim_type>("dims"),
};

// Event lists. Vectors that a reader makes empty are made by `make` here, too.

constexpr field_row server_block_rows[] = {
    bounded_text<2, &zeb5_ev_sb_list::sb_list>("sb_list"), // readers cut it at 254 bytes
    names<&zeb5_ev_sb_list::ch_list>("ch_list"),
};
constexpr record_type server_block_type = {"server block", server_block_rows,
                                           []() -> void * {
                                               auto *block = new zeb5_ev_sb_list();
                                               block->ch_list = new std::vector<char *>;
                                               return block;
                                           },
                                           fresh<zeb5_ev_sb_list>};

constexpr field_row event_entry_rows[] = {
    selected_by("--event", number<&zeb5_ev_entry::evtype>("evtype", EVENT_TYPE)),
    number<&zeb5_ev_entry::min_ev_time, &time_stamp::timeup>("timeup"),
    number<&zeb5_ev_entry::min_ev_time, &time_stamp::timelow>("timelow"),
    number<&zeb5_ev_entry::tmask>("tmask"),
    number<&zeb5_ev_entry::priority>("priority"),
    parts<&zeb5_ev_entry::sb_list, server_block_type>("sb_list"),
};

// Env index dictionaries

template <class Entry, class Block> struct entry_rows {
    static constexpr field_row rows[] = {
        number<&Entry::index>("index"),
        selected_by("--channel", text<&Entry::data, &Block::env_prop>("env_prop")),
        decimal<&Entry::data, &Block::env_ch_abs_delta>("env_ch_abs_delta"),
        decimal<&Entry::data, &Block::env_ch_rel_delta>("env_ch_rel_delta"),
    };
    static void *make() {
        void *made = std::calloc(1, sizeof(Entry));
        if (!made)
            throw std::bad_alloc();
        return made;
    }
};
using classic_rows = entry_rows<zeb5_env_index_dictionary_entry, zeb5_env_dictionary_block>;
using rows_2010 = entry_rows<zeb5_env_index_dictionary_entry_2010, zeb5_env_dictionary_block_2010>;

// Camera features

constexpr field_row feature_rows[] = {
    selected_by("--channel", free_text<&ZEB5GigEFeature::name>("name")),
    number<&ZEB5GigEFeature::type>("type", FEATURE_TYPE),
    free_text<&ZEB5GigEFeature::extension>("extension"),
    free_text<&ZEB5GigEFeature::tooltip>("tooltip"),
    free_text<&ZEB5GigEFeature::description>("description"),
};

// A new member of a record does not compile here: it needs a name, one more in the count, and a row above

[[maybe_unused]] void members_of(const bit_descr &bit) {
    [[maybe_unused]] const auto &[a, b, c] = bit;
    static_assert(members_in(bit_rows) == 3, "each member has a row");
}
[[maybe_unused]] void members_of(const stat_descr &stat) {
    [[maybe_unused]] const auto &[a, b, c, d] = stat;
    static_assert(members_in(stat_rows) == 4, "each member has a row");
}
[[maybe_unused]] void members_of(const dim_descr &dim) {
    [[maybe_unused]] const auto &[a, b, c, d, e, f] = dim;
    static_assert(members_in(dim_rows) == 6, "each member has a row");
}
[[maybe_unused]] void members_of(const chan_descr_2010 &channel) {
    [[maybe_unused]] const auto &[a, b, c, d, e, f, g, h, i, j, k, l, m, n, o, p, q] = channel;
    static_assert(members_in(channel_rows) == 17, "each member has a row");
}
[[maybe_unused]] void members_of(const zeb5_ev_sb_list &block) {
    [[maybe_unused]] const auto &[a, b] = block;
    static_assert(members_in(server_block_rows) == 2, "each member has a row");
}
[[maybe_unused]] void members_of(const zeb5_ev_entry &entry) {
    [[maybe_unused]] const auto &[a, b, time, d, e] = entry;
    [[maybe_unused]] const auto &[seconds, microseconds] = time;
    static_assert(members_in(event_entry_rows) == 6, "each member has a row, those of the time as well");
}
[[maybe_unused]] void members_of(const zeb5_env_index_dictionary_entry &entry) {
    [[maybe_unused]] const auto &[index, data] = entry;
    [[maybe_unused]] const auto &[a, b, c] = data;
    static_assert(members_in(classic_rows::rows) == 4, "each member has a row, those of the data as well");
}
[[maybe_unused]] void members_of(const zeb5_env_index_dictionary_entry_2010 &entry) {
    [[maybe_unused]] const auto &[index, data] = entry;
    [[maybe_unused]] const auto &[a, b, c] = data;
    static_assert(members_in(rows_2010::rows) == 4, "each member has a row, those of the data as well");
}
[[maybe_unused]] void members_of(const ZEB5GigEFeature &feature) {
    [[maybe_unused]] const auto &[a, b, c, d, e] = feature;
    static_assert(members_in(feature_rows) == 5, "each member has a row");
}

} // namespace

const record_type channel_type = {"channel", channel_rows, make_new<chan_descr_2010>, fresh<chan_descr_2010>};
const record_type event_entry_type = {"event", event_entry_rows,
                                      []() -> void * {
                                          auto *entry = new zeb5_ev_entry();
                                          entry->sb_list = new std::vector<zeb5_ev_sb_list *>;
                                          return entry;
                                      },
                                      fresh<zeb5_ev_entry>};
const record_type classic_dictionary_entry_type = {"dictionary entry", classic_rows::rows, classic_rows::make,
                                                   fresh<zeb5_env_index_dictionary_entry>};
const record_type dictionary_entry_type = {"dictionary entry", rows_2010::rows, rows_2010::make,
                                           fresh<zeb5_env_index_dictionary_entry_2010>};
const record_type feature_type = {"feature", feature_rows, make_new<ZEB5GigEFeature>, fresh<ZEB5GigEFeature>};
