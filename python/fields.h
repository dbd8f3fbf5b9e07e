#ifndef ZEB5_PYTHON_FIELDS_H
#define ZEB5_PYTHON_FIELDS_H

/// Members of records as attributes of Python.

#include "texts.h"

template <auto Member> struct member;
template <class Record, class Value, Value Record::*Member> struct member<Member> {
    using record = Record;
    using value = Value;
};

/// A field of fixed size that holds a text; `what` is its documentation.
template <auto Member, class Class> void text_field(Class &type, const char *name, const char *what) {
    using record = typename member<Member>::record;
    type.def_property(
        name, [](const record &r) { return to_python(text_of(r.*Member)); },
        [](record &r, const py::str &text) { set_text(r.*Member, text); }, what);
}

/// A list of parts. A part lives as long as the list that has its record.
template <auto Member, class Class> void parts_field(Class &type, const char *name, const char *what) {
    using record = typename member<Member>::record;
    type.def_property_readonly(
        name,
        [](py::object self) {
            py::list parts;
            for (auto *part : self.cast<record &>().*Member)
                if (part)
                    parts.append(py::cast(part, py::return_value_policy::reference_internal, self));
            return parts;
        },
        what);
}

#endif
