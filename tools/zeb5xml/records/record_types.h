#ifndef ZEB5XML_RECORD_TYPES_H
#define ZEB5XML_RECORD_TYPES_H

#include "values/record.h"

/// The record types of the public headers: what each field of each record struct is.
extern const record_type channel_type;                  // chan_descr_2010
extern const record_type event_entry_type;              // zeb5_ev_entry
extern const record_type classic_dictionary_entry_type; // zeb5_env_index_dictionary_entry
extern const record_type dictionary_entry_type;         // zeb5_env_index_dictionary_entry_2010
extern const record_type feature_type;                  // ZEB5GigEFeature

#endif
