#ifndef ZEB5_CHAN_DESCR_TAGS_H
#define ZEB5_CHAN_DESCR_TAGS_H

/// Element names of the channel documents, each spelled once for reader and writer.

namespace zeb5 {

/// Columns of `tags`: the level of an element.
enum tag_level { OF_CHANNEL, OF_DIM, OF_STAT, TAG_LEVELS };

/// Rows of `tags`.
enum tag_number {
    TAG_ROOT,
    TAG_CHANNEL,
    TAG_EVTYPE,
    TAG_STREAM,
    TAG_PROP,
    TAG_NAME,
    TAG_DESC,
    TAG_UNITS,
    TAG_SIZE,
    TAG_PART, // a bit, a dimension, a statistic
    TAG_PART_NAME,
    TAG_PART_DESCR,
    TAG_SB_NAME,
    TAG_DTYPE,
    TAG_COUNT,
    TAG_SETPOINT,
    TAG_SUBSYSTEM,
    TAG_DB_KEY,
    TAG_NUMBERS
};

/// Elements of the CHANDESCRIPTIONS dialect.
inline constexpr const char *tags[][TAG_LEVELS] = {
    {"CHANDESCRIPTIONS"},
    {"CHANNEL"},
    {"EVTYPE"},
    {"STREAM"},
    {"PROP"},
    {"NAME"},
    {"DESC"},
    {"UNITS", "DIM_UNITS", "STAT_UNITS"},
    {"SIZE"},
    {"BIT", "DIM", "STAT"},
    {"BIT_NAME", "DIM_NAME", "STAT_NAME"},
    {"BIT_DESCR", "DIM_DESCR", "STAT_DESCR"},
    {"SB_NAME"},
    {"DTYPE"},
    {"COUNT"},
    {"SETPOINT"},
    {"SUBSYSTEM"},
    {"DB_KEY"},
};
static_assert(sizeof tags / sizeof tags[0] == TAG_NUMBERS, "one row for each name");

/// Axes of spectra and images, which the writer adds to a dimension.
enum axis_number {
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
    AXIS_NUMBERS
};
inline constexpr const char *axis_tags[] = {
    "DIM_START",  "DIM_INC",  "DIM_NDATA",  "DIM_GROUPS", "DIM_GROUP_INC", "DIM_XSTART", "DIM_WIDTH",
    "DIM_YSTART", "DIM_XBIN", "DIM_HEIGHT", "DIM_YBIN",   "DIM_BPP",       "DIM_EBITPP", "DIM_UNSIGNED",
};
static_assert(sizeof axis_tags / sizeof axis_tags[0] == AXIS_NUMBERS, "one name for each");

/// The date of writing, which stands first in a document.
inline constexpr char date_tag[] = "isodate";

/// Elements of the DAQvariables dialect.
namespace daq_tags {
inline constexpr char root[] = "DAQvariables";
inline constexpr char float_channel[] = "DaqFloat";
inline constexpr char bits_channel[] = "DaqBits";
inline constexpr char matrix_channel[] = "DaqFloatMatrix";
inline constexpr char ev_type[] = "evType";
inline constexpr char prop[] = "orvin";
inline constexpr char daq_name[] = "daqName";
inline constexpr char db_key[] = "DBKey";
inline constexpr char set_point[] = "setPoint";
inline constexpr char sb_name[] = "sbName";
inline constexpr char subsystem[] = "subSystem";
inline constexpr char description[] = "description";
inline constexpr char units[] = "units";
inline constexpr char first_index[] = "firstIndex";
inline constexpr char last_index[] = "lastIndex";
inline constexpr char bit[] = "bitTitle";
inline constexpr char bit_number[] = "bit";
inline constexpr char dim[] = "dimension";
inline constexpr char dim_id[] = "id";
inline constexpr char dim_name[] = "name";
inline constexpr char freq[] = "freq";
} // namespace daq_tags

} // namespace zeb5

#endif
