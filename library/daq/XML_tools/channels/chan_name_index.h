#ifndef ZEB5_CHAN_NAME_INDEX_H
#define ZEB5_CHAN_NAME_INDEX_H

/// Look-up of channel descriptions by name, with the results of a search from the front of the list.

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

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

/// Knows in which records of the list a name stands. Neither names nor records are copied, and the list stays
/// its owner's.
///
/// A client may change a name at any time through a pointer that it was given. So a record that was handed
/// out is compared at every question, in the order of the list, up to the record that the index gives. The
/// names of the others are as they were read.
class chan_name_index {
public:
    explicit chan_name_index(const std::vector<chan_descr_2010 *> &list) : list_(list) {}

    /// To be called before a reader appends records to the list or changes some: it may end at any of them.
    void forget() { is_filled_ = false; }

    /// To be called when the reader has ended. Takes the memory for all questions to come.
    void list_changed();

    /// Notes that the caller gets a pointer into the record at this position.
    void note_handed_out(std::size_t position);

    /// Returns the first record of this name, or null. A site's get_event_struct_type() may be asked for an
    /// EVENT_NAME, at every question anew.
    const chan_descr_2010 *find(name_role role, std::string_view name);

private:
    using number = std::uint32_t; // of a record's place in the list, or of a name: two for each record
    static constexpr number none = UINT32_MAX;

    number &chain_of(std::string_view name);
    void fill();
    number first_handed_out(name_role role, const wanted_name &name, number before) const;

    const std::vector<chan_descr_2010 *> &list_;
    std::vector<number> first_{none}; // name of each chain, by hash: a power of two
    std::vector<number> next_;        // name of the same chain, of each name
    bool is_filled_ = false;
    std::vector<number> handed_out_; // places, in the order of the list
    bool has_lost_one_ = false;      // there was no memory to note one: every question searches the list
    std::size_t seed_ = reinterpret_cast<std::uintptr_t>(this);
};

} // namespace zeb5

#endif
