#include "field_limits.h"

#include <algorithm>
#include <cstring>

#include "parse_chan_descr.h"
#include "parse_env_index_dictionary.h"
#include "parse_ev_list.h"
#include "started_parser.h"

namespace {

enum place { ANYWHERE, IN_CHANNEL, IN_DIMENSION };

struct field_limit {
    const char *root;
    const char *element;
    place in;
    size_t size; // of the field, its terminating NUL included
    const char *where = "";
};

const field_limit limits[] = {
    {"CHANDESCRIPTIONS", "PROP", ANYWHERE, sizeof(chan_descr_2010::prop_name)},
    {"CHANDESCRIPTIONS", "NAME", ANYWHERE, sizeof(chan_descr_2010::daq_name)},
    {"CHANDESCRIPTIONS", "DESC", ANYWHERE, sizeof(chan_descr_2010::prop_desc)},
    {"CHANDESCRIPTIONS", "UNITS", ANYWHERE, sizeof(chan_descr_2010::units)},
    {"CHANDESCRIPTIONS", "SB_NAME", ANYWHERE, sizeof(chan_descr_2010::sb_name)},
    {"CHANDESCRIPTIONS", "SUBSYSTEM", ANYWHERE, sizeof(chan_descr_2010::subsystem)},
    {"CHANDESCRIPTIONS", "BIT_NAME", ANYWHERE, sizeof(bit_descr::bit_name)},
    {"CHANDESCRIPTIONS", "BIT_DESCR", ANYWHERE, sizeof(bit_descr::bit_desc)},
    {"CHANDESCRIPTIONS", "DIM_NAME", IN_DIMENSION, sizeof(dim_descr::dim_name)},
    {"CHANDESCRIPTIONS", "DIM_DESCR", IN_DIMENSION, sizeof(dim_descr::dim_desc)},
    {"CHANDESCRIPTIONS", "DIM_DESCR", IN_CHANNEL, sizeof(chan_descr_2010::prop_desc)},
    {"CHANDESCRIPTIONS", "DIM_UNITS", IN_DIMENSION, sizeof(dim_descr::units)},
    {"CHANDESCRIPTIONS", "STAT_NAME", IN_DIMENSION, sizeof(stat_descr::stat_name)},
    {"CHANDESCRIPTIONS", "STAT_DESCR", IN_DIMENSION, sizeof(stat_descr::stat_desc)},
    {"CHANDESCRIPTIONS", "STAT_DESCR", IN_CHANNEL, sizeof(chan_descr_2010::prop_desc)},
    {"CHANDESCRIPTIONS", "STAT_UNITS", IN_DIMENSION, sizeof(stat_descr::units)},
    {"DAQvariables", "orvin", ANYWHERE, sizeof(chan_descr_2010::prop_name)},
    {"DAQvariables", "daqName", ANYWHERE, sizeof(chan_descr_2010::daq_name)},
    {"DAQvariables", "subSystem", ANYWHERE, sizeof(chan_descr_2010::subsystem)},
    {"DAQvariables", "description", IN_CHANNEL, sizeof(chan_descr_2010::prop_desc)},
    {"DAQvariables", "description", IN_DIMENSION, sizeof(dim_descr::dim_desc)},
    {"DAQvariables", "units", ANYWHERE, sizeof(chan_descr_2010::units)},
    {"DAQvariables", "bitTitle", ANYWHERE, sizeof(bit_descr::bit_name)},
    {"DAQvariables", "name", IN_DIMENSION, sizeof(dim_descr::dim_name)},
    {"BMR", "SBLOCK", ANYWHERE, sizeof(zeb5_ev_sb_list::sb_list) - 1}, // its last byte is never used
    {"ENVINDEXDICT", "PROP", ANYWHERE, sizeof(zeb5_env_dictionary_block::env_prop), " in the classic layout"},
    {"ENVINDEXDICT", "PROP", ANYWHERE, sizeof(zeb5_env_dictionary_block_2010::env_prop),
     " in the 2010 layout"},
};

const char *const channel_elements[] = {"CHANNEL", "DaqFloat", "DaqBits", "DaqFloatMatrix"};
const char *const dimension_elements[] = {"DIM", "dimension"};

template <size_t N> bool is_one_of(const char *tag, const char *const (&names)[N]) {
    for (const char *name : names)
        if (strcmp(tag, name) == 0)
            return true;
    return false;
}

/// Returns the first bytes of a value, not cut within a character.
std::string beginning_of(const std::string &value) {
    size_t end = std::min<size_t>(value.size(), 40);
    while (end > 0 && end < value.size() && (value[end] & 0xc0) == 0x80)
        --end;
    return value.substr(0, end);
}

template <class Parser> std::vector<cut_value> walk(Parser &parser, const std::string &root) {
    std::vector<cut_value> found;
    place now = IN_CHANNEL;
    char *tag, *value;
    while (parser.parse(&tag, &value) == 0) {
        if (tag && is_one_of(tag, channel_elements))
            now = IN_CHANNEL;
        if (tag && is_one_of(tag, dimension_elements))
            now = IN_DIMENSION;
        if (!tag || !value)
            continue;
        size_t length = strlen(value);
        for (const field_limit &row : limits)
            if (length >= row.size && (row.in == ANYWHERE || row.in == now) && root == row.root &&
                strcmp(tag, row.element) == 0)
                found.push_back({tag, length, row.size - 1, row.where, beginning_of(value)});
    }
    return found;
}

} // namespace

std::vector<cut_value> find_cut_values(const document &source, const std::string &root) {
    return with_started_parser(source, [&](auto &parser) { return walk(parser, root); });
}
