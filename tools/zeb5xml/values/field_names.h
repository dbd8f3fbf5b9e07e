#ifndef ZEB5XML_FIELD_NAMES_H
#define ZEB5XML_FIELD_NAMES_H

/// The names of what the bits of a mask or the numbers of a type mean, beside the fields that hold them.

#include <string>

#include "values/record.h"

/// Whether the numbers of the field have names.
bool has_names(const field_row &row);

/// Whether one value has several names.
bool is_mask(const field_row &row);

/// Name of the field of the names: "ev_type_names" of a mask, "evtype_name" of a type.
std::string name_of_names(const field_row &row);

/// The names that a value of the field has. Names are those of the event-utility library.
texts names_of(const field_row &row, const value &number);

#endif
