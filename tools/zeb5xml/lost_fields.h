#ifndef ZEB5XML_LOST_FIELDS_H
#define ZEB5XML_LOST_FIELDS_H

#include "differences.h"

/// The fields of `loser` that are set and that did not get into `merged`, the record that was made of it and
/// of others.
std::vector<difference> lost_fields(const record &loser, const record &merged, const record_type &type);

#endif
