#ifndef ZEB5XML_LOST_FIELDS_H
#define ZEB5XML_LOST_FIELDS_H

#include <map>

#include "records/differences.h"
#include "records/record_order.h"

/// A record that was made of several. It may have the parts of thousands, and each of these is compared with
/// it.
class merged_record {
public:
    merged_record(record merged, const record_type &type);

    /// The fields of `loser`, one of the several, that are set and did not get into the merged record.
    std::vector<difference> lost_fields(const record &loser) const;

private:
    record beside(const record &loser) const;

    record merged_;
    const record_type &type_;
    std::vector<std::map<record_key, std::vector<size_t>>> places_; // of the parts in each list, by identity
};

#endif
