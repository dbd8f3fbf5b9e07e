#ifndef ZEB5_CHAN_NAME_INDEX_H
#define ZEB5_CHAN_NAME_INDEX_H

/// Look-up of channel descriptions by name, with the results of a search from the front of the list.

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include "name_hash.h"
#include "parse_chan_descr.h"

namespace zeb5 {

/// What a name is compared with.
enum name_role {
    DAQ_NAME,   // the DAQ name
    PROP_NAME,  // the property name
    EVENT_NAME, // of records with an event type: the DAQ name, and the property name where some event type
                // is neither local nor ML
    NAME_ROLES
};

/// Knows for every name the first place in the list where it stands. Neither names nor records are copied,
/// and the list stays its owner's.
///
/// Names may change at any time, as clients hold pointers to them. Nobody can watch 100,000 names at every
/// question, so this is how the answers stay right:
/// - What the index answers is compared with the record as it is now. If it differs, all is indexed anew.
/// - The latest `window` records handed out are not left to the index: every question compares them one by
///   one. These are all in a list that is no longer than that. A record is checked against the index when it
///   ceases to be one of them.
/// - An older one is compared again once it is handed out again, and checked when it is asked for by number.
/// - Once there are older ones, a name that the index does not know in its role is searched for in the list,
///   until `most_in_vain` searches found nothing and no change was seen since: clients that ask for names
///   which are not there would wait for a search each.
/// So an answer can be a wrong one only when a name was changed through a pointer to none of the latest
/// `window` records, to one that the index knows from another record, and is seen by none of the above.
class chan_name_index {
public:
    static constexpr std::size_t window = 256;
    static constexpr std::size_t most_in_vain = 256;

    /// The list is empty yet.
    explicit chan_name_index(const std::vector<chan_descr_2010 *> &list);

    /// To be called before a reader appends records to the list or changes some: it may end at any of them.
    void forget() { filled_ = false; }

    /// To be called when it has ended.
    void list_changed();

    /// The caller gets a pointer into the record at this position, and may change its names from now on.
    void hand_out(std::size_t position);

    /// Checks the record at this position against the index.
    void check(std::size_t position);

    /// The first record of this name; null when there is none. get_event_struct_type() is asked at every
    /// question for an EVENT_NAME.
    const chan_descr_2010 *find(name_role role, std::string_view name);

private:
    using place = std::uint32_t; // a position in the list
    static constexpr place nowhere = UINT32_MAX;

    struct slot {
        std::uint32_t key;       // half of the hash of the name
        place first[NAME_ROLES]; // all nowhere: the slot is free
    };

    std::size_t hash_of(std::string_view name) const { return name_hash(name, seed_); }
    bool matches(name_role role, const chan_descr_2010 &record, std::string_view name) const;
    const chan_descr_2010 *search(name_role role, std::string_view name) const;
    place first_handed_out(name_role role, std::string_view name, place before) const;
    template <class Entry> bool all_entries(const chan_descr_2010 &record, Entry entry) const;
    slot &slot_of(std::size_t hash);
    void note_event_classes();
    std::size_t slots_wanted() const { return 5 * list_.size() / 2 + 1; }
    void fill();

    const std::vector<chan_descr_2010 *> &list_;
    std::vector<slot> slots_; // a power of two, a fifth of it free
    bool filled_ = false;     // the slots hold what was in the list, by all that is known
    std::size_t searches_in_vain_ = 0;
    std::uint32_t non_local_ = 0; // event types that are neither local nor ML

    std::vector<place> latest_; // handed out last, the latest first
    bool any_older_ = false;    // others were handed out before

    std::size_t seed_ = reinterpret_cast<std::uintptr_t>(this);
};

} // namespace zeb5

#endif
