#include "event_util.h"

#include <map>
#include <mutex>
#include <string>

namespace {

struct event_type {
    int number;
    const char *name;
    ZEB5_EV_STRUCT_TYPE structure;
};

// The name is made from the enumerator, so a row cannot give a type the name of another.
#define EVENT(enumerator, structure)                                                                         \
    { ZEB5_EV_##enumerator, #enumerator, ZEB5_EV_STRUCT_##structure }
// clang-format off
const event_type event_types[] = {
    EVENT(HB, GLOBAL),
    EVENT(NORMAL, GLOBAL),
    EVENT(BOR, GLOBAL),
    EVENT(EOR, GLOBAL),
    EVENT(ENV, GLOBAL),
    EVENT(UPD, GLOBAL),
    EVENT(IMAGE, LOCAL),
    EVENT(WS, LOCAL),
    EVENT(MCP, LOCAL),
    EVENT(WSS, LOCAL),
    EVENT(BL1, LOCAL),
    EVENT(BL2, LOCAL),
    EVENT(BL3, LOCAL),
    EVENT(PG0, LOCAL),
    EVENT(PG1, LOCAL),
    EVENT(PG2, LOCAL),
    EVENT(GMD, LOCAL),
    EVENT(PHOTEN, LOCAL),
    EVENT(PHOTWL, LOCAL),
    EVENT(BEAM_ENERGY, LOCAL),
    EVENT(LLRF_ML, ML),
    EVENT(BEAM_ENERGY_BYPASS, LOCAL),
    EVENT(SPECTR_1, LOCAL),
    EVENT(SPECTR_2, LOCAL),
    EVENT(SPECTR_3, LOCAL),
    EVENT(SPECTR_4, LOCAL),
    EVENT(SPECTR_5, LOCAL),
    EVENT(TOROID_ML, ML),
    EVENT(28, UNDEF),
    EVENT(29, UNDEF),
    EVENT(30, UNDEF),
    EVENT(31, UNDEF),
    EVENT(EVMAX, UNKNOWN), // marks the end of the types, and has a name, too
};
// clang-format on
#undef EVENT

struct block_type {
    int number;
    const char *name;
};

#define BLOCK(enumerator)                                                                                    \
    { ZEB5_##enumerator, #enumerator }
const block_type block_types[] = {
    BLOCK(UPD_BLOCK),
    BLOCK(ENV_DICT_BLOCK),
    BLOCK(ENV_BLOCK),
    BLOCK(BOR_BLOCK),
    BLOCK(EOR_BLOCK),
    BLOCK(BLOCK_BPM),
    BLOCK(BLOCK_BPM_Z),
    BLOCK(BLOCK_BPM_S),
    BLOCK(BLOCK_SINGLE),
    BLOCK(BLOCK_TOROID),
    BLOCK(BLOCK_RF_250K),
    BLOCK(BLOCK_ENERGY),
    BLOCK(BLOCK_IMAGE),
    BLOCK(BLOCK_WS_FAST),
    BLOCK(BLOCK_WS_SLOW),
    BLOCK(BLOCK_CPLINTL),
    BLOCK(BLOCK_GUNINTL),
    BLOCK(BLOCK_MCP),
    BLOCK(BLOCK_PHM),
    BLOCK(BLOCK_WSS_RAW),
    BLOCK(BLOCK_WSS_COR),
    BLOCK(BLOCK_NAME_VALUE),
    BLOCK(BLOCK_EQDATA),
    BLOCK(BLOCK_IMG_ROI1),
    BLOCK(BLOCK_IMG_ROI2),
    BLOCK(BLOCK_IMG_ROI3),
    BLOCK(BLOCK_IMAGE_EXT),
    BLOCK(BLOCK_GENERIC_SPECT),
    BLOCK(UPD_BLOCK_DONT_USE_31),
    BLOCK(UPD_BLOCK_2010),
    BLOCK(ENV_DICT_BLOCK_2010),
    BLOCK(ENV_BLOCK_2010),
    BLOCK(BOR_BLOCK_2010),
    BLOCK(EOR_BLOCK_2010),
    BLOCK(BLOCK_BPM_2010),
    BLOCK(BLOCK_BPM_Z_2010),
    BLOCK(BLOCK_BPM_S_2010),
    BLOCK(BLOCK_1CHAN_2010),
    BLOCK(BLOCK_TOROID_2010),
    BLOCK(BLOCK_RF_250K_2010),
    BLOCK(BLOCK_ENERGY_2010),
    BLOCK(BLOCK_2CHAN_2010),
    BLOCK(BLOCK_WS_2010),
    BLOCK(BLOCK_4CHAN_2010),
    BLOCK(BLOCK_CPLINTL_2010),
    BLOCK(BLOCK_GUNINTL_2010),
    BLOCK(BLOCK_MCP_2010),
    BLOCK(BLOCK_PHM_2010),
    BLOCK(BLOCK_6CHAN_2010),
    BLOCK(BLOCK_8CHAN_2010),
    BLOCK(BLOCK_3CHAN_2010),
    BLOCK(BLOCK_5CHAN_2010),
    BLOCK(BLOCK_7CHAN_2010),
    BLOCK(BLOCK_MAX_2010),
};
#undef BLOCK

/// Rows are found by their number, so their order does not matter. Returns null when there is none.
template <class Row, std::size_t N> const Row *find_row(const Row (&rows)[N], int number) {
    for (const Row &row : rows)
        if (row.number == number)
            return &row;
    return nullptr;
}

/// The decimal form of a number that has no name. Any caller may keep the string, so it is made once and
/// never released. At the end of the process, too, a destructor that runs later may still print it.
const char *decimal_name(int number) {
    static std::mutex guard;
    static auto &names = *new std::map<int, std::string>;
    const std::lock_guard<std::mutex> lock(guard);
    return names.try_emplace(number, std::to_string(number)).first->second.c_str();
}

} // namespace

const char *event_name_itoa(int ev_type) {
    const event_type *row = find_row(event_types, ev_type);
    return row ? row->name : decimal_name(ev_type);
}

const char *block_name_itoa(int block_type_number) {
    const block_type *row = find_row(block_types, block_type_number);
    return row ? row->name : decimal_name(block_type_number);
}

int get_event_struct_type(int ev_type) {
    const event_type *row = find_row(event_types, ev_type);
    return row ? row->structure : ZEB5_EV_STRUCT_UNKNOWN;
}
