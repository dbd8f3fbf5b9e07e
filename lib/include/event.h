#ifndef ZEB5_EVENT_H
#define ZEB5_EVENT_H

/// The vocabulary of the data acquisition: event types, data block types and the plain records that travel
/// inside data blocks. All integers are 32 bits wide and little-endian; there are no functions here.

#include <cstddef>
#include <cstdint>

/// Event types. The value is also the bit of that type in an event-type mask.
enum ZEB5_EVTYPE {
    ZEB5_EV_HB = 0,
    ZEB5_EV_NORMAL = 1,
    ZEB5_EV_BOR = 2, // begin of run
    ZEB5_EV_EOR = 3, // end of run
    ZEB5_EV_ENV = 4, // slow control
    ZEB5_EV_UPD = 5, // update of slow control
    ZEB5_EV_IMAGE = 6,
    ZEB5_EV_WS = 7,
    ZEB5_EV_MCP = 8,
    ZEB5_EV_WSS = 9,
    ZEB5_EV_BL1 = 10,
    ZEB5_EV_BL2 = 11,
    ZEB5_EV_BL3 = 12,
    ZEB5_EV_PG0 = 13,
    ZEB5_EV_PG1 = 14,
    ZEB5_EV_PG2 = 15,
    ZEB5_EV_GMD = 16,
    ZEB5_EV_PHOTEN = 17,
    ZEB5_EV_PHOTWL = 18,
    ZEB5_EV_BEAM_ENERGY = 19,
    ZEB5_EV_LLRF_ML = 20,
    ZEB5_EV_BEAM_ENERGY_BYPASS = 21,
    ZEB5_EV_SPECTR_1 = 22,
    ZEB5_EV_SPECTR_2 = 23,
    ZEB5_EV_SPECTR_3 = 24,
    ZEB5_EV_SPECTR_4 = 25,
    ZEB5_EV_SPECTR_5 = 26,
    ZEB5_EV_TOROID_ML = 27,
    ZEB5_EV_28 = 28,
    ZEB5_EV_29 = 29,
    ZEB5_EV_30 = 30,
    ZEB5_EV_31 = 31,
    ZEB5_EV_EVMAX = 32
};

/// Data block types. Types below 32 are the classic blocks, types from 32 on their 2010 successors.
/// 0, 29, 30, 32 and 54 to 59 are unassigned.
enum ZEB5_SUBBLOCK_TYPE {
    ZEB5_UPD_BLOCK = 1,
    ZEB5_ENV_DICT_BLOCK = 2,
    ZEB5_ENV_BLOCK = 3,
    ZEB5_BOR_BLOCK = 4,
    ZEB5_EOR_BLOCK = 5,
    ZEB5_BLOCK_BPM = 6,
    ZEB5_BLOCK_BPM_Z = 7,
    ZEB5_BLOCK_BPM_S = 8,
    ZEB5_BLOCK_SINGLE = 9,
    ZEB5_BLOCK_TOROID = 10,
    ZEB5_BLOCK_RF_250K = 11,
    ZEB5_BLOCK_ENERGY = 12,
    ZEB5_BLOCK_IMAGE = 13,
    ZEB5_BLOCK_WS_FAST = 14,
    ZEB5_BLOCK_WS_SLOW = 15,
    ZEB5_BLOCK_CPLINTL = 16,
    ZEB5_BLOCK_GUNINTL = 17,
    ZEB5_BLOCK_MCP = 18,
    ZEB5_BLOCK_PHM = 19,
    ZEB5_BLOCK_WSS_RAW = 20,
    ZEB5_BLOCK_WSS_COR = 21,
    ZEB5_BLOCK_NAME_VALUE = 22,
    ZEB5_BLOCK_EQDATA = 23,
    ZEB5_BLOCK_IMG_ROI1 = 24,
    ZEB5_BLOCK_IMG_ROI2 = 25,
    ZEB5_BLOCK_IMG_ROI3 = 26,
    ZEB5_BLOCK_IMAGE_EXT = 27,
    ZEB5_BLOCK_GENERIC_SPECT = 28,
    ZEB5_UPD_BLOCK_DONT_USE_31 = 31,
    ZEB5_UPD_BLOCK_2010 = 33,
    ZEB5_ENV_DICT_BLOCK_2010 = 34,
    ZEB5_ENV_BLOCK_2010 = 35,
    ZEB5_BOR_BLOCK_2010 = 36,
    ZEB5_EOR_BLOCK_2010 = 37,
    ZEB5_BLOCK_BPM_2010 = 38,
    ZEB5_BLOCK_BPM_Z_2010 = 39,
    ZEB5_BLOCK_BPM_S_2010 = 40,
    ZEB5_BLOCK_1CHAN_2010 = 41,
    ZEB5_BLOCK_TOROID_2010 = 42,
    ZEB5_BLOCK_RF_250K_2010 = 43,
    ZEB5_BLOCK_ENERGY_2010 = 44,
    ZEB5_BLOCK_2CHAN_2010 = 45,
    ZEB5_BLOCK_WS_2010 = 46,
    ZEB5_BLOCK_4CHAN_2010 = 47,
    ZEB5_BLOCK_CPLINTL_2010 = 48,
    ZEB5_BLOCK_GUNINTL_2010 = 49,
    ZEB5_BLOCK_MCP_2010 = 50,
    ZEB5_BLOCK_PHM_2010 = 51,
    ZEB5_BLOCK_6CHAN_2010 = 52,
    ZEB5_BLOCK_8CHAN_2010 = 53,
    ZEB5_BLOCK_3CHAN_2010 = 60,
    ZEB5_BLOCK_5CHAN_2010 = 61,
    ZEB5_BLOCK_7CHAN_2010 = 62,
    ZEB5_BLOCK_MAX_2010 = 63
};

/// How an index of recorded data is laid out.
enum {
    ZEB5_DAQ_INDEX_FORMAT = 0,
    ZEB5_DAQ_INDEX_EVENT_FORMAT = 1,
    ZEB5_DAQ_INDEX_BOTH_FORMAT = 2,
    ZEB5_DAQ_INDEX_FORMAT_MAX = 3
};

/// A point in time since the epoch.
struct time_stamp {
    std::uint32_t timeup;  // seconds
    std::uint32_t timelow; // microseconds
};

/// Head of an XML channel-description blob inside a data block; the text follows it directly.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wpedantic" // the array of the text has no size
struct __attribute__((packed)) zeb5_xml_chan_descr_header {
    std::uint32_t pattern; // 0xCDECDEF2 or 0xCDECDEF3
    std::int32_t length;   // bytes of the whole blob, these 8 included
    char xml[];            // length - 8 bytes of XML, not NUL-terminated
};
#pragma GCC diagnostic pop

/// Axis of a spectrum.
struct zeb5_spect_header_2010 {
    float start;         // first abscissa
    float inc;           // step between neighbours
    std::int32_t ndata;  // number of values
    std::int32_t groups; // number of groups
    float group_inc;     // step between groups
};

/// Head of an image frame. Widths, heights and starts are in pixels; the spare fields named with an axis
/// meaning carry the axis of an image that is used like a spectrum.
struct zeb5_image_ext_frame_head {
    std::int32_t width;
    std::int32_t height;
    std::int32_t aoi_width;  // area of interest; below 1: the whole width
    std::int32_t aoi_height; // area of interest; below 1: the whole height
    std::int32_t x_start;
    std::int32_t y_start;
    std::int32_t bpp;    // bytes per pixel
    std::int32_t ebitpp; // effective bits per pixel
    std::int32_t hbin;   // horizontal binning
    std::int32_t vbin;   // vertical binning
    std::int32_t source_format;
    std::int32_t image_format;
    std::uint32_t frame;
    std::uint32_t event;
    float scale_x;
    float scale_y;
    float image_rotation;
    float fspare2; // axis: first abscissa
    float fspare3; // axis: step
    float fspare4; // axis: step between groups
    std::int32_t image_flags;
    std::int32_t ispare2; // axis: number of groups
    std::int32_t ispare3; // axis: number of values
    std::int32_t ispare4; // 1: pixels are unsigned, 0: signed, -1: not known
    std::int32_t length;  // bytes of image data
};

/// One slow-control property with its change thresholds, classic layout.
struct zeb5_env_dictionary_block {
    char env_prop[80];      // property name, NUL-terminated
    float env_ch_abs_delta; // absolute change threshold
    float env_ch_rel_delta; // relative change threshold
};

/// The same with the longer names of the 2010 layout.
struct zeb5_env_dictionary_block_2010 {
    char env_prop[256];
    float env_ch_abs_delta;
    float env_ch_rel_delta;
};

static_assert(sizeof(time_stamp) == 8, "layout of data blocks");
static_assert(sizeof(zeb5_xml_chan_descr_header) == 8, "layout of data blocks");
static_assert(offsetof(zeb5_xml_chan_descr_header, length) == 4, "layout of data blocks");
static_assert(offsetof(zeb5_xml_chan_descr_header, xml) == 8, "layout of data blocks");
static_assert(sizeof(zeb5_spect_header_2010) == 20, "layout of data blocks");
static_assert(offsetof(zeb5_spect_header_2010, group_inc) == 16, "layout of data blocks");
static_assert(sizeof(zeb5_image_ext_frame_head) == 100, "layout of data blocks");
static_assert(offsetof(zeb5_image_ext_frame_head, frame) == 48, "layout of data blocks");
static_assert(offsetof(zeb5_image_ext_frame_head, scale_x) == 56, "layout of data blocks");
static_assert(offsetof(zeb5_image_ext_frame_head, image_flags) == 80, "layout of data blocks");
static_assert(sizeof(zeb5_env_dictionary_block) == 88, "layout of data blocks");
static_assert(offsetof(zeb5_env_dictionary_block, env_ch_abs_delta) == 80, "layout of data blocks");
static_assert(sizeof(zeb5_env_dictionary_block_2010) == 264, "layout of data blocks");
static_assert(offsetof(zeb5_env_dictionary_block_2010, env_ch_abs_delta) == 256, "layout of data blocks");

#endif
