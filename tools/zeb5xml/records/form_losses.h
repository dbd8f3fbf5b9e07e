#ifndef ZEB5XML_FORM_LOSSES_H
#define ZEB5XML_FORM_LOSSES_H

#include "records/differences.h"
#include "records/record_list.h"

/// Returns the form of this kind with this name; null when there is none.
const form *form_named(const record_kind &kind, const std::string &name);

/// Place of the loss of the form that explains the difference; the number of losses when there is none.
size_t loss_of(const form &to, const difference &one);

/// Whether the form holds something of the field of this loss.
bool is_held(const form_loss &loss);

/// Whether the form holds something of this field.
bool holds(const form &one, const std::string &field);

/// Names of the fields of which the form holds nothing, or not what stood there.
texts fields_not_held(const form &one);

#endif
