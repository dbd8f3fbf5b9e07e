#ifndef ZEB5_CHAN_NAME_INDEX_H
#define ZEB5_CHAN_NAME_INDEX_H

/// Look-up of channel descriptions by name, with the results of a search from the front of the list.

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include "event_util.h"
#include "parse_chan_descr.h"

namespace zeb5 {

class wanted_name;

/// What a name is compared with.
enum name_role {
    DAQ_NAME,  // the DAQ name
    PROP_NAME, // the property name
    EVENT_NAME // of records with an event type: the DAQ name, and the property name where one of its event
               // types is neither local nor ML
};

/// Whether channels with events of this structure class are looked up by DAQ name, and not by property.
inline bool is_found_by_daq_name(int structure) {
    // Kept: sites find channels of their own classes 10 to 15 by property, though the selector takes these
    // for ML
    return structure == ZEB5_EV_STRUCT_LOCAL || structure == ZEB5_EV_STRUCT_ML;
}

/// Knows which records of the list have a name. It copies neither names nor records, and does not own the
/// list.
///
/// A client may change a name at any time through a pointer that it was given. So every look-up compares the
/// changeable records, in the order of the list, up to the record that the index gives. The names of the
/// other records are as they were read.
class chan_name_index {
public:
    explicit chan_name_index(const std::vector<chan_descr_2010 *> &list) : list_(list) {}

    /// Must be called before a reader appends records to the list or changes some, as the reader may fail at
    /// any of them.
    void forget() { is_filled_ = false; }

    /// Must be called when the reader has ended. Allocates the memory for all later look-ups.
    void make_room();

    /// From now on the names of the record at this position may change, as the caller gets a pointer into it.
    void mark_changeable(std::size_t position);

    /// Returns the first record of this name, or null. For an EVENT_NAME, each look-up may call the site's
    /// get_event_struct_type().
    const chan_descr_2010 *find(name_role role, std::string_view name);

private:
    using number = std::uint32_t; // of a record's place in the list, or of a name: two for each record
    static constexpr number none = UINT32_MAX;

    number &chain_of(std::string_view name);
    void fill();
    number first_changeable(name_role role, const wanted_name &name, number before) const;

    const std::vector<chan_descr_2010 *> &list_;
    std::vector<number> first_{none}; // first name of each chain, by hash; size is a power of two
    std::vector<number> next_;        // for each name, the next one of its chain
    bool is_filled_ = false;
    std::vector<number> changeable_; // places of records, in the order of the list
    bool lacks_changeable_ = false;  // no memory was left for one of them: every look-up searches the list
    std::size_t seed_ = reinterpret_cast<std::uintptr_t>(this);
};

} // namespace zeb5

#endif
