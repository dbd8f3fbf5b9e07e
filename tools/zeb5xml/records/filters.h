#ifndef ZEB5XML_FILTERS_H
#define ZEB5XML_FILTERS_H

#include <string>
#include <vector>

#include "command_line/subcommand.h"
#include "records/record_list.h"

/// Which records the user wants; an empty text wants all. The rows of a record type tell which field an
/// option looks at.
struct record_filters {
    std::string channel;
    std::string event;
    std::string stream;
    std::string subsystem;

    /// The options of a subcommand that has filters.
    std::vector<argument> arguments();

    /// Leaves only the wanted records in the list. Throws failure when an option is given that is not for
    /// this kind; `name` is the document's.
    void apply(record_list &list, const record_kind &kind, const std::string &name) const;
};

#endif
